#include "shell/frmHowTo.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
#include "shell/RtfReader.h"
#include "ui_frmHowTo.h"

#include <QTextCursor>

frmHowTo::frmHowTo(QWidget *parent)
    : LoggedWindow(parent, QStringLiteral("Form_Unload frmHowTo")), m_ui(new Ui::frmHowTo)
{
    m_ui->setupUi(this);
}

frmHowTo::~frmHowTo()
{
    delete m_ui;
}

QString frmHowTo::rulesPath()
{
    return platform::programPath(QStringLiteral("HowToPlayTandrel.rtf"));
}

void frmHowTo::reportMissing(const QString &path)
{
    platform::msgBox(QStringLiteral("Unable to locate file ") + platform::shownPath(path), platform::mb::Information,
                     QStringLiteral("File not Loaded"));
}

void frmHowTo::Form_Load()
{
    Globals::Guarded("Form_Load frmHowTo", [&] {
        logLoad();
        const QString path = rulesPath();
        // It may have gone since the button looked for it.
        if (!platform::fileExists(path)) {
            reportMissing(path);
            return;
        }
        rtf::read(platform::readBytes(path), m_ui->rtb1->document());
        m_ui->rtb1->moveCursor(QTextCursor::Start);
    });
}
