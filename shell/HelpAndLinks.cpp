// The buttons of the main window that lead out of the game: the rules, the
// About window and the web pages.
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
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
    connect(m_ui->clkHowToPlay, &QAbstractButton::clicked, this, &frmTandrel::clkHowToPlay_Click);
    connect(m_ui->clkAbout, &QAbstractButton::clicked, this, &frmTandrel::clkAbout_Click);
    connect(m_ui->clkContact, &QAbstractButton::clicked, this, &frmTandrel::clkContact_Click);
    connect(m_ui->clkDonate, &QAbstractButton::clicked, this, &frmTandrel::clkDonate_Click);
    connect(m_ui->clkVideo, &QAbstractButton::clicked, this, &frmTandrel::clkVideo_Click);
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
