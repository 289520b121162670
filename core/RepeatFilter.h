#pragma once
#include <QStringList>
#include <optional>
#include <vector>

// Decides which question lines repeat earlier ones. A line repeats when it
// occurs anywhere inside the lines accepted before it. Because "occurs
// inside" is transitive, that is the same as occurring inside any earlier
// line at all (a line that was itself a repeat sits inside an accepted one),
// so all lines are judged together. Two ways give the same answer.
class RepeatFilter {
public:
    // The lines in file order; returns for each whether it is kept.
    static std::vector<bool> keep(const QStringList &lines);

    // Quick on the files hosts write, and nothing when the lines share so
    // many pieces that it would take more than a few passes over them
    // (RepeatsByAnchors.cpp).
    static std::optional<std::vector<bool>> keepByAnchors(const QStringList &lines);
    // Close to linear in the size of the lines whatever they hold, but
    // several times slower than the anchors on the files hosts write
    // (RepeatsBySuffixArray.cpp).
    static std::vector<bool> keepBySuffixArray(const QStringList &lines);
};
