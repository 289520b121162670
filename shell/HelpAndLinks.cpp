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
        LoggedWindow::showOnce<frmHowTo>(QStringLiteral("frmHowTo"), [&] {
            auto *viewer = new frmHowTo(this);
            viewer->Form_Load();
            return viewer;
        });
    });
}

void frmTandrel::clkAbout_Click()
{
    Guarded("clkAbout_Click", [&] {
        // The start-up window once more, held open: it never opens a second
        // main window, and About twice shows the one window again.
        LoggedWindow::showOnce<frmSplash>(QStringLiteral("frmSplash"), [&] {
            auto *about = new frmSplash(this);
            about->Form_Load();
            about->Timer1->stop();
            about->ui()->clkClose->setVisible(true);
            return about;
        });
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
