#include "shell/frmWin.h"
#include "platform/Services.h"
#include "platform/Globals.h"
#include "ui_frmWin.h"
#include <QKeyEvent>

using Globals::Guarded;

frmWin::frmWin(QString &tag, QWidget *parent)
    : LoggedDialog(parent, QStringLiteral("Form_UnLoad frmWIN")), m_ui(new Ui::frmWin), m_tag(tag)
{
    m_ui->setupUi(this);
    connect(m_ui->clkYes, &QAbstractButton::clicked, this, &frmWin::clkYes_Click);
    connect(m_ui->clkNo, &QAbstractButton::clicked, this, &frmWin::clkNo_Click);
    connect(m_ui->clkClose, &QAbstractButton::clicked, this, &frmWin::clkClose_Click);
}

frmWin::~frmWin()
{
    delete m_ui;
}

void frmWin::Form_Load()
{
    Guarded("Form_Load frmWin", [&] { logLoad(); });
}

void frmWin::showMessage(const QString &message, bool tie)
{
    m_tie = tie;
    m_ui->clkStatus->setText(message);
    m_ui->clkClose->setVisible(!tie);
    m_ui->clkYes->setVisible(tie);
    m_ui->clkNo->setVisible(tie);
    // A tie needs an answer: no close box, and Escape does not count as one.
    setWindowFlag(Qt::WindowCloseButtonHint, !tie);
    (tie ? m_ui->clkYes : m_ui->clkClose)->setDefault(true);
    (tie ? m_ui->clkYes : m_ui->clkClose)->setFocus();
}

void frmWin::clkYes_Click()
{
    Guarded("clkYes_Click", [&] {
        m_tag = QString::number(platform::mb::Yes);
        accept();
    });
}

void frmWin::clkNo_Click()
{
    Guarded("clkNo_Click", [&] {
        m_tag = QString::number(platform::mb::No);
        accept();
    });
}

void frmWin::clkClose_Click()
{
    Guarded("clkClose_Click", [&] { accept(); });
}

void frmWin::reject()
{
    if (!m_tie)
        QDialog::reject();
}

void frmWin::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_PageDown)
        (m_tie ? m_ui->clkYes : m_ui->clkClose)->click();
    else
        LoggedDialog::keyPressEvent(event);
}
