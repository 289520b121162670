#pragma once
#include <QString>
#include <QStringList>
#include <vector>

// Decides which question lines repeat earlier ones. A line repeats when it
// occurs anywhere inside the lines accepted before it. Because "occurs
// inside" is transitive, that is the same as occurring inside any earlier
// line at all (a line that was itself a repeat sits inside an accepted one),
// so all lines can be judged together, after the file has been read:
//  - exact repeats are found with a hash table;
//  - every other line picks its rarest 8-character piece as an anchor (a
//    small counting sketch, filled from a sample of the lines, tells which
//    pieces are rare);
//  - one pass over all lines, hashing each piece, finds where anchors occur,
//    and each such place is compared in full.
// So the work stays close to linear in the size of the file.
class RepeatFilter {
public:
    // The lines in file order; returns for each whether it is kept.
    static std::vector<bool> keep(const QStringList &lines);
};
