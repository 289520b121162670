#pragma once
// The backup folder beside the program, the test that it takes files, and
// the stamped copies of both question files made before an update.
#include <QString>
#include <QStringList>

namespace backups {

inline const QString FolderName = QStringLiteral("BackUps");

// A folder in the program folder; false after a reported failure.
bool createDirs(const QString &dirName);
// Writes and deletes a test file there; false after a reported failure.
bool testFileWrite(const QString &dirName);
// Copies the question files into the backup folder, stamped with the time.
void saveOldFiles();
// The names those copies take, as wildcards.
QStringList copyNames();

}  // namespace backups
