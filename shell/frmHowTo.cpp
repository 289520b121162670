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
        // Asked before reading: a larger document could not be shown.
        const QByteArray bytes = platform::readBytes(path, platform::MaxShownChars);
        // Read aside and checked before the box lays it out, so that a file
        // the box cannot show leaves it as it was.
        auto document = std::make_unique<QTextDocument>();
        rtf::read(bytes, document.get());
        platform::checkShowable(document->toPlainText());
        document->setDocumentMargin(12);  // the text clear of the frame, as on a page
        document->setParent(m_ui->rtb1);
        m_ui->rtb1->setDocument(document.release());  // shown from its start
        // A viewer shows no caret; keys still move through the text, for a
        // screen reader. (The width lives in the document's layout.)
        m_ui->rtb1->setCursorWidth(0);
    });
}
