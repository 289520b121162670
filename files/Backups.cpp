// The backup folder beside the program, its write test and the stamped copies.
#include "files/Backups.h"
#include "core/Decks.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"

using Globals::Guard;
using Globals::Guarded;

namespace backups {

namespace {

// The advice a host gets when the program folder takes no new files.
Guard folderGuard(const char *label, const QString &trying, const QString &permission)
{
    Guard guard(label);
    guard.shape = [=](Globals::Report &report) {
        const QString dir = platform::shownPath(platform::app().programDir());
        const QString exe = platform::app().exeName();
        report.between = {
            QString(),
            trying,
            permission,
            QString(),
            QStringLiteral("Running the ") + exe + QStringLiteral(".exe app as adminstrator may also fix the problem."),
            QString(),
            QStringLiteral("To always run this program as administrator, right click on the ") + exe
                + QStringLiteral(".exe icon in the ") + dir + QStringLiteral(" directory."),
            QStringLiteral("Select properties, click compatable tab, click 'Run this program as Adminstator', then click Okay"),
            QString(),
        };
    };
    return guard;
}
}  // namespace

bool createDirs(const QString &dirName)
{
    const QString path = platform::programPath(dirName);
    const QString dir = platform::shownPath(platform::app().programDir());
    bool made = false;
    Guarded(folderGuard("createDirs", QStringLiteral("Trying to create ") + platform::shownPath(path),
                        QStringLiteral("Ensure you have read, write permission for directory ") + dir
                            + QStringLiteral(" and any child directorys.")),
            [&] {
                platform::makeFolder(path);
                made = true;
            });
    return made;
}

bool testFileWrite(const QString &dirName)
{
    const QString folder = platform::shownPath(platform::programPath(dirName));
    bool written = false;
    Guarded(folderGuard("testFileWrite", QStringLiteral("Trying to write a file in ") + folder,
                        QStringLiteral("Ensure you have read, write permission for directory ") + folder),
            [&] {
                const QString path = platform::programPath(dirName + QStringLiteral("/Test.txt"));
                platform::writeInPlace(path, QStringLiteral("This is a test..."));
                platform::removeFile(path);
                written = true;
            });
    return written;
}

namespace {
QString copyName(const QString &name, const QString &stamp)
{
    return name.chopped(4) + QLatin1Char('_') + stamp + QStringLiteral(".txt");
}
}  // namespace

QStringList copyNames()
{
    return {copyName(decks::MatchFileName, QStringLiteral("*")), copyName(decks::PhraseFileName, QStringLiteral("*"))};
}

void saveOldFiles()
{
    Guarded("saveOldFiles", [&] {
        QString stamp = platform::nowText();
        for (const QChar c : {QLatin1Char(' '), QLatin1Char(':'), QLatin1Char('/')})
            stamp.replace(c, QLatin1Char('_'));
        platform::makeFolder(platform::programPath(FolderName));
        for (const QString &name : {decks::MatchFileName, decks::PhraseFileName}) {
            const QString path = platform::programPath(name);
            if (!platform::fileExists(path))
                continue;
            const QString backup = FolderName + QLatin1Char('/') + copyName(name, stamp);
            platform::copyWhole(path, platform::programPath(backup));
        }
    });
}

}  // namespace backups
