#include "shell/frmAudience.h"
#include "shell/ScreenFit.h"
#include "ui_frmAudience.h"
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>

frmAudience::frmAudience(QWidget *main)
    : LoggedWindow(main, QStringLiteral("Form_Unload frmAudience")), m_ui(new Ui::frmAudience)
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::FramelessWindowHint);
    m_questionLabels = {m_ui->lblQuestion_0, m_ui->lblQuestion_1};
    for (int i = 0; i < 10; ++i) {
        m_names << findChild<QLabel *>(QStringLiteral("lblPlayer_%1").arg(i));
        m_scores << findChild<QLabel *>(QStringLiteral("lblScore_%1").arg(i));
    }
    // Nothing is shown before the first view arrives.
    for (QLabel *label : m_names + m_scores + m_questionLabels)
        label->hide();
    // A question fits the room the layout gives it, whenever that changes.
    for (QLabel *label : m_questionLabels)
        label->installEventFilter(this);
}

frmAudience::~frmAudience()
{
    delete m_ui;
}

void frmAudience::Form_Load()
{
    logLoad();
}

void frmAudience::showOn(QScreen *screen)
{
    m_screen = screen;
    setScreen(screen);
    // Without a window manager nobody else puts it on its screen.
    setGeometry(screen->geometry());
    showFullScreen();
}

void frmAudience::showView(const View &view)
{
    const View before = std::exchange(m_view, view);
    const auto setText = [](QLabel *label, const QString &text) {
        if (label->text() != text)
            label->setText(text);
    };
    setText(m_ui->lblStatus, view.status);
    setText(m_ui->lblRound, view.round);
    setText(m_ui->lblCount, view.count);
    for (int i = 0; i < m_names.size(); ++i) {
        const bool inPlay = i < view.names.size();
        m_names[i]->setVisible(inPlay);
        m_scores[i]->setVisible(inPlay);
        if (!inPlay)
            continue;
        setText(m_names[i], view.names[i]);
        setText(m_scores[i], QString::number(view.scores[i]));
        const bool turn = i == view.turn;
        if (m_names[i]->property("turn").toBool() != turn) {
            for (QLabel *label : {m_names[i], m_scores[i]}) {
                label->setProperty("turn", turn);  // the style sheet marks the row
                label->style()->polish(label);
            }
            m_names[i]->setAccessibleName(view.names[i] + (turn ? QStringLiteral(", their turn") : QString()));
        }
    }
    // Both halves of a match, one phrase; the second label only for a match.
    const bool questionChanged = before.question != view.question;
    for (int i = 0; i < m_questionLabels.size(); ++i) {
        const bool used = i < view.question.size();
        if (m_questionLabels[i]->isVisible() != used) {
            m_questionLabels[i]->setVisible(used);
            // A phrase has the room of both halves of a match.
            m_ui->layoutShow->setRowStretch(1 + i, used || i == 0 ? 3 : 0);
        }
        if (used)
            setText(m_questionLabels[i], view.question[i]);
    }
    if (before.names.size() != view.names.size())
        fitFonts();
    else if (questionChanged)
        fitQuestion();
}

bool frmAudience::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        screenfit::fitText(static_cast<QLabel *>(watched), height() * QuestionPoints);
    return LoggedWindow::eventFilter(watched, event);
}

void frmAudience::toggleBlank()
{
    m_ui->pnlShow->setVisible(!m_ui->pnlShow->isVisible());
}

bool frmAudience::isBlank() const
{
    return m_ui->pnlShow->isHidden();
}

void frmAudience::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        Q_EMIT pageKey(key);
    else if (key == Qt::Key_F5 || key == Qt::Key_Escape)
        close();
    else if (key == Qt::Key_B || key == Qt::Key_Period)
        toggleBlank();
    else
        LoggedWindow::keyPressEvent(event);
}

void frmAudience::resizeEvent(QResizeEvent *event)
{
    LoggedWindow::resizeEvent(event);
    fitFonts();
}

void frmAudience::fitFonts()
{
    // Sizes follow the screen's height: what reads from the back of a room
    // at one size reads there at any.
    const int h = height();
    const int margin = h / 30;
    m_ui->layoutShow->setContentsMargins(margin, margin / 2, margin, margin);
    m_ui->layoutShow->setSpacing(margin / 2);
    const auto setPixels = [](QWidget *w, int pixels, bool bold) {
        QFont font = w->font();
        font.setPixelSize(std::max(pixels, 8));
        font.setBold(bold);
        w->setFont(font);
    };
    setPixels(m_ui->lblStatus, h / 22, false);
    setPixels(m_ui->lblRound, h / 22, true);
    setPixels(m_ui->lblCount, h / 6, true);
    // Five rows to a column, each as tall as the players' part allows; a
    // second column from the sixth player on.
    const int rows = std::clamp(int(m_view.names.size()), 2, 5);
    const bool twoColumns = m_view.names.size() > 5;
    m_ui->layoutPlayers->setColumnStretch(3, twoColumns ? 4 : 0);
    m_ui->layoutPlayers->setColumnStretch(4, twoColumns ? 1 : 0);
    m_ui->layoutPlayers->setColumnMinimumWidth(2, twoColumns ? margin : 0);
    m_ui->layoutPlayers->setVerticalSpacing(h / 120);
    for (int i = 0; i < m_names.size(); ++i) {
        const int pixels = std::min(h / 14, h * 3 / 10 / rows - h / 60);
        setPixels(m_names[i], pixels, true);
        setPixels(m_scores[i], pixels, true);
    }
    fitQuestion();
}

void frmAudience::fitQuestion()
{
    for (QLabel *label : m_questionLabels)
        if (label->isVisible())
            screenfit::fitText(label, height() * QuestionPoints);
}
