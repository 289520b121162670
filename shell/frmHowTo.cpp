#include "shell/frmHowTo.h"
#include "platform/Errors.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "platform/Globals.h"
#include "shell/RtfReader.h"
#include "ui_frmHowTo.h"

#include <QTextDocument>
#include <memory>

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
        const QByteArray bytes = platform::readBytes(path, platform::MaxShownFileBytes);
        if (bytes.size() > platform::MaxShownChars)
            platform::raise(platform::err::OutOfMemory, QStringLiteral("the rules document is too large"));
        // Read aside and checked before the box lays it out, so that a file
        // the box cannot show leaves it as it was.
        auto document = std::make_unique<QTextDocument>();
        rtf::read(bytes, document.get());
        platform::checkShowable(document->toPlainText());
        document->setParent(m_ui->rtb1);
        m_ui->rtb1->setDocument(document.release());  // shown from its start
    });
}
