// The buttons of the main window that lead out of the game: the editors,
// the update check with its backups, the rules, About and the web pages.
#include "files/Backups.h"
#include "files/frmEdit.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Links.h"
#include "shell/frmHowTo.h"
#include "shell/frmSplash.h"
#include "shell/frmTandrel.h"
#include "ui_frmSplash.h"
#include "ui_frmTandrel.h"

#include <QTimer>

using Globals::Guarded;

void frmTandrel::connectLinks()
{
    connect(m_ui->clkEdit, &QAbstractButton::clicked, this, &frmTandrel::clkEdit_Click);
    connect(m_ui->clkUpdate, &QAbstractButton::clicked, this, &frmTandrel::clkUpdate_Click);
    connect(m_ui->clkHowToPlay, &QAbstractButton::clicked, this, &frmTandrel::clkHowToPlay_Click);
    connect(m_ui->clkAbout, &QAbstractButton::clicked, this, &frmTandrel::clkAbout_Click);
    connect(m_ui->clkContact, &QAbstractButton::clicked, this, &frmTandrel::clkContact_Click);
    connect(m_ui->clkDonate, &QAbstractButton::clicked, this, &frmTandrel::clkDonate_Click);
    connect(m_ui->clkVideo, &QAbstractButton::clicked, this, &frmTandrel::clkVideo_Click);
}

void frmTandrel::clkEdit_Click()
{
    Guarded("clkEdit_Click", [&] {
        LoggedWindow::showOnce<frmEdit>(QStringLiteral("frmEdit"), [&] { return new frmEdit(this); });
    });
}

void frmTandrel::clkUpdate_Click()
{
    Guarded("clkUpdate_Click", [&] {
        if (!backups::createDirs(backups::FolderName) || !backups::testFileWrite(backups::FolderName))
            return;
        const QString exe = platform::app().exeName();
        const QString question = QStringLiteral("The current version of ") + exe + QStringLiteral(" software is ")
                                 + platform::app().version().text() + QStringLiteral("\r\n\r\n")
                                 + QStringLiteral("Would you like to check for a ") + exe
                                 + QStringLiteral(" software update?");
        if (platform::msgBox(question, platform::mb::YesNoCancel, QStringLiteral("Check For Update?"))
            != platform::mb::Yes)
            return;
        backups::saveOldFiles();
        platform::shell().openUrl(links::UpdatePage);
    });
}

void frmTandrel::clkHowToPlay_Click()
{
    Guarded("clkHowToPlay_Click", [&] {
        const QString path = frmHowTo::rulesPath();
        if (!platform::fileExists(path)) {
            frmHowTo::reportMissing(path);
            return;
        }
        LoggedWindow::showOnce<frmHowTo>(QStringLiteral("frmHowTo"), [&] { return new frmHowTo(this); });
    });
}

void frmTandrel::clkAbout_Click()
{
    Guarded("clkAbout_Click", [&] {
        // The start-up window once more, held open: its timer is stopped
        // before it can tick, so it never opens a second main window; About
        // twice shows the one window again.
        auto *about =
            LoggedWindow::showOnce<frmSplash>(QStringLiteral("frmSplash"), [&] { return new frmSplash(this); });
        about->Timer1->stop();
        about->ui()->clkClose->setVisible(true);
    });
}

void frmTandrel::clkContact_Click()
{
    Guarded("clkContact_Click", [&] { platform::shell().openUrl(links::ContactPage); });
}

void frmTandrel::clkDonate_Click()
{
    Guarded("clkDonate_Click", [&] { platform::shell().openUrl(links::DonatePage); });
}

void frmTandrel::clkVideo_Click()
{
    Guarded("clkVideo_Click", [&] { platform::shell().openUrl(links::VideoPage); });
}
