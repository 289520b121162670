// The backup folder beside the program and the update check that fills it.
#include "core/Decks.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
#include "shell/Links.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

#include <QAbstractButton>

using Globals::Guard;
using Globals::Guarded;

namespace {
const QString BackUps = QStringLiteral("BackUps");

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

void frmTandrel::connectFiles()
{
    connect(m_ui->clkConfig, &QAbstractButton::clicked, this, &frmTandrel::clkConfig_Click);
    connect(m_ui->clkEdit, &QAbstractButton::clicked, this, &frmTandrel::clkEdit_Click);
    connect(m_ui->clkUpdate, &QAbstractButton::clicked, this, &frmTandrel::clkUpdate_Click);
}

bool frmTandrel::createDirs(const QString &dirName)
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

bool frmTandrel::testFileWrite(const QString &dirName)
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

void frmTandrel::saveOldFiles()
{
    Guarded("saveOldFiles", [&] {
        QString stamp = platform::nowText();
        for (const QChar c : {QLatin1Char(' '), QLatin1Char(':'), QLatin1Char('/')})
            stamp.replace(c, QLatin1Char('_'));
        platform::makeFolder(platform::programPath(BackUps));
        for (const QString &name : {decks::MatchFileName, decks::PhraseFileName}) {
            const QString path = platform::programPath(name);
            if (!platform::fileExists(path))
                continue;
            const QString backup = BackUps + QLatin1Char('/') + name.chopped(4) + QLatin1Char('_') + stamp
                                   + QStringLiteral(".txt");
            platform::copyWhole(path, platform::programPath(backup));
        }
    });
}

void frmTandrel::clkUpdate_Click()
{
    Guarded("clkUpdate_Click", [&] {
        if (!createDirs(BackUps) || !testFileWrite(BackUps))
            return;
        const QString exe = platform::app().exeName();
        const QString question = QStringLiteral("The current version of ") + exe + QStringLiteral(" software is ")
                                 + platform::app().version().text() + QStringLiteral("\r\n\r\n")
                                 + QStringLiteral("Would you like to check for a ") + exe
                                 + QStringLiteral(" software update?");
        if (platform::msgBox(question, platform::mb::YesNoCancel, QStringLiteral("Check For Update?"))
            != platform::mb::Yes)
            return;
        saveOldFiles();
        platform::shell().openUrl(links::UpdatePage);
    });
}
