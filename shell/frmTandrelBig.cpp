// The game shown big: the whole window scaled to fill a screen (F11), and
// the audience screen on a display of its own (F5).
#include "shell/ScreenFit.h"
#include "shell/frmAudience.h"
#include "shell/frmTandrel.h"
#include "timing/Countdown.h"
#include "ui_frmTandrel.h"
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QWindowStateChangeEvent>

void frmTandrel::connectBig()
{
    connect(new QShortcut(QKeySequence(Qt::Key_F11), this), &QShortcut::activated, this, &frmTandrel::toggleFullScreen);
    // F5 and Shift+F5 are a clicker's "start" and "end presentation".
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this, &frmTandrel::toggleAudience);
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F5), this), &QShortcut::activated, this,
            &frmTandrel::closeAudience);
    // A clicker's "blank screen" sends B or ".": taken only while there is a
    // screen to blank, and never from a text box, so a name can hold them.
    for (int key : {int(Qt::Key_B), int(Qt::Key_Period)}) {
        auto *blank = new QShortcut(QKeySequence(key), this);
        blank->setEnabled(false);
        connect(blank, &QShortcut::activated, this, [this] {
            if (m_audience && !qobject_cast<QLineEdit *>(QApplication::focusWidget()))
                m_audience->toggleBlank();
        });
        m_blankKeys.push_back(blank);
    }
    // A host without a mouse: a point up or down for the player whose turn
    // it is, by the rules of the row's arrows, and the scoreboard. Never from
    // a text box or a list, whose keys are their own; a list has no Ctrl keys
    // of its own, so undo works right after a choice in one.
    const auto up = [this] { clkUp_Click(m_game.currentPlayer()); };
    const auto down = [this] { clkDown_Click(m_game.currentPlayer()); };
    m_hostKeys.insert({{Qt::Key_Plus, up}, {Qt::Key_Equal, up}, {(Qt::KeypadModifier | Qt::Key_Plus).toCombined(), up},
                       {Qt::Key_Minus, down}, {(Qt::KeypadModifier | Qt::Key_Minus).toCombined(), down},
                       {Qt::Key_S, [this] {
                            m_scoreboard = !m_scoreboard;
                            paintAudience();
                        }}});
    for (auto it = m_hostKeys.cbegin(); it != m_hostKeys.cend(); ++it) {
        const bool ctrl = it.key() & Qt::ControlModifier;
        connect(new QShortcut(QKeySequence(it.key()), this), &QShortcut::activated, this, [action = it.value(), ctrl] {
            QWidget *focus = QApplication::focusWidget();
            if (!qobject_cast<QLineEdit *>(focus) && (ctrl || !qobject_cast<QComboBox *>(focus)))
                action();
        });
    }
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, &frmTandrel::paintAudience);
    connect(m_countdown, &Countdown::displayChanged, this, &frmTandrel::paintAudience);
    // A display unplugged takes its audience screen with it.
    connect(qApp, &QGuiApplication::screenRemoved, this, [this](QScreen *screen) {
        if (m_audience && m_audience->shownOn() == screen)
            m_audience->close();
    });
    m_design = std::make_unique<screenfit::Design>(this);
}

void frmTandrel::toggleFullScreen()
{
    // The state change that follows fits the design (changeEvent).
    if (!(windowState() & Qt::WindowFullScreen)) {
        m_normalGeometry = isBig() ? normalGeometry() : geometry();
        // A screen smaller than the design (an old 800 x 600 projector) gets
        // it scaled down.
        setMinimumSize(0, 0);
        // Without a window manager (a kiosk, a bare X session) nobody else
        // sizes the window, so it sizes itself: before asking for full
        // screen, since a window manager takes a size asked for later as the
        // end of it.
        if (screen())
            setGeometry(screen()->geometry());
        showFullScreen();
    } else {
        showNormal();
        setGeometry(m_normalGeometry);
    }
}

void frmTandrel::changeEvent(QEvent *event)
{
    // Full screen or maximised, by F11, the title bar or the window manager,
    // the design follows the state the window is in. A window manager reports
    // states late and in passing, so nothing here asks for another.
    if (event->type() == QEvent::WindowStateChange) {
        setMinimumSize(isBig() ? QSize(0, 0) : DesignSize);
        fitToWindow();
    }
    QWidget::changeEvent(event);
}

void frmTandrel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitToWindow();
}

void frmTandrel::fitToWindow()
{
    if (!m_design)
        return;
    // A normal window keeps the design, whatever its size.
    const bool big = isBig();
    const double factor = big ? screenfit::factor(DesignSize, size()) : 1;
    const QPoint at = big ? screenfit::offset(DesignSize, size(), factor) : QPoint();
    if (factor == m_design->currentFactor() && at == m_designOffset)
        return;
    m_design->apply(factor, at);
    m_designOffset = at;
    // Other windows open at the same scale while the game is big.
    delete m_otherWindows;
    m_otherWindows = big ? new screenfit::OtherWindows(this, factor) : nullptr;
    for (QLabel *label : {lblName[0], lblName[1], m_ui->lblPhrase})
        fitText(label);
}

bool frmTandrel::audienceOpen() const
{
    return m_audience && m_audience->isVisible();
}

void frmTandrel::toggleAudience()
{
    if (audienceOpen()) {
        closeAudience();
        return;
    }
    // Another display when there is one; else over this window.
    QScreen *on = screen();
    for (QScreen *other : QGuiApplication::screens())
        if (other != screen()) {
            on = other;
            break;
        }
    m_audience = new frmAudience(this);
    m_audience->Form_Load();
    connect(m_audience, &frmAudience::pageKey, this, [this](int key) {
        qint16 code = keyCodeOf(key);
        PageUpDown(code);
    });
    connect(m_audience, &frmAudience::hostKey, this, [this](int key) {
        if (const auto action = m_hostKeys.value(key))
            action();
        qint16 code = clickerCode(keyCodeOf(key));
        if (code == KeyPageUp || code == KeyPageDown)
            PageUpDown(code);
    });
    for (QShortcut *blank : m_blankKeys)
        connect(m_audience, &QObject::destroyed, blank, [blank] { blank->setEnabled(false); });
    // On a display of its own the host keeps the keyboard.
    m_audience->setAttribute(Qt::WA_ShowWithoutActivating, on != screen());
    paintAudience();
    m_audience->showOn(on);
    for (QShortcut *blank : m_blankKeys)
        blank->setEnabled(true);
}

void frmTandrel::closeAudience()
{
    if (m_audience)
        m_audience->close();
}
