#include "platform/LoggedWindow.h"
#include "platform/Services.h"
#include "platform/Globals.h"

namespace {
void logLoading(QWidget *window)
{
    platform::registerLoadedWindow(window);
    Globals::WriteLogInfo(QStringLiteral("Loading Form ") + window->objectName());
}
}  // namespace

void UnloadRecord::write(QWidget *window)
{
    Globals::Guarded(m_label, [&] {
        if (!m_written)
            Globals::WriteLogInfo(QStringLiteral("Unloading Form ") + window->objectName());
        m_written = true;
    });
    // Gone for the program from now on, even before it is deleted.
    platform::unregisterLoadedWindow(window);
}

LoggedDialog::LoggedDialog(QWidget *parent, QString unloadLabel) : QDialog(parent), m_unload(std::move(unloadLabel)) {}

LoggedDialog::~LoggedDialog()
{
    m_unload.write(this);
}

void LoggedDialog::logLoad()
{
    logLoading(this);
}

LoggedWindow::LoggedWindow(QWidget *parent, QString unloadLabel)
    : QWidget(parent, Qt::Window), m_unload(std::move(unloadLabel))
{
    setAttribute(Qt::WA_DeleteOnClose);
}

LoggedWindow::~LoggedWindow()
{
    m_unload.write(this);
}

void LoggedWindow::logLoad()
{
    logLoading(this);
}

void LoggedWindow::centreOnOwner()
{
    if (!parentWidget())
        return;
    const QRect owner = parentWidget()->window()->frameGeometry();
    QRect mine = frameGeometry();
    mine.moveCenter(owner.center());
    move(mine.topLeft());
}

void LoggedWindow::closeEvent(QCloseEvent *event)
{
    m_unload.write(this);
    QWidget::closeEvent(event);
}
