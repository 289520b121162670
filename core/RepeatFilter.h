#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

// Decides which question lines repeat earlier ones. A line repeats when it
// occurs anywhere inside the lines accepted before it. Because "occurs
// inside" is transitive, that is the same as occurring inside any earlier
// line at all (a line that was itself a repeat sits inside an accepted one),
// so all lines are judged together. There are two ways to do it; both give
// the same answer.
class RepeatFilter {
public:
    // The lines in file order; returns for each whether it is kept. Anchors
    // first, and sorting when the anchors would take too long.
    static std::vector<bool> keep(const QStringList &lines);

    // Quick on the files hosts write, and nothing when the lines share so
    // many pieces that it would take more than a few passes over them.
    static std::optional<std::vector<bool>> keepByAnchors(const QStringList &lines);
    // Close to linear in the size of the lines whatever they hold: cheap
    // proofs first, then a search for the lines they leave open (an
    // automaton when those are few, else sorting every place in the lines).
    // taken, when given, tells which settled it (the benchmarks show it).
    enum class Way { Proofs, Automaton, Sorting };
    static std::vector<bool> keepBySorting(const QStringList &lines, Way *taken = nullptr);
};
