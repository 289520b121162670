#pragma once
// What must hold for any bytes given to the readers of hand-edited text
// and of the kept game. Each check returns an empty string when the input passes, otherwise
// what went wrong. The fuzz targets abort on a failure; the test suite runs
// every input the fuzzers ever found through the same checks.
#include <QByteArrayView>
#include <QString>

namespace fuzzcheck {

// The question file rules: the first byte picks the kind and the size of the
// pieces the rest arrives in. Lines cut piece by piece must equal lines cut
// in one go and by a plain reference, and the single-pass rules with the
// repeat check must accept exactly what the rules applied literally accept;
// the repeat check's two ways must agree.
QString questionFile(QByteArrayView data);

// The configuration file's line rules: every accepted setting is in range,
// reads back the same from the line the dialog would write for it, and the
// only failure is the overflow of a too large countdown length.
QString configFile(QByteArrayView data);

// The rules document reader: any bytes, no crash, RTF recognised by its
// header only, and no more text out than bytes in.
QString rulesDocument(QByteArrayView data);

// The kept game's reader: a file read, as it is or with its sum made right,
// holds only numbers the game can play with, is no other folder's, and
// written again reads back the same.
QString keptGame(QByteArrayView data);

}  // namespace fuzzcheck
