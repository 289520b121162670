#include "shell/frmAudience.h"
#include "shell/BigText.h"
#include "shell/ScreenFit.h"
#include "ui_frmAudience.h"
#include <QGraphicsColorizeEffect>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>
#include <QVariantAnimation>
#include <functional>

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
    auto *bigText = new bigtext::Painter(this);
    for (QLabel *label : m_questionLabels + m_names + m_scores + QList<QLabel *>{m_ui->lblCount})
        bigText->install(label);
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
    // As showFullScreen(), which would also take the keyboard: on a display
    // of its own, the host's window keeps it.
    setWindowState(windowState() | Qt::WindowFullScreen);
    show();
    if (!testAttribute(Qt::WA_ShowWithoutActivating))
        activateWindow();
}

void frmAudience::showView(const audience::View &view)
{
    using audience::Scene;
    const audience::View before = std::exchange(m_view, view);
    const auto setText = [](QLabel *label, const QString &text) {
        if (label->text() != text)
            label->setText(text);
    };
    const auto setFlag = [](QWidget *w, const char *name, bool on) {
        if (w->property(name).toBool() != on) {
            w->setProperty(name, on);  // the style sheet shows it
            w->style()->polish(w);
        }
    };
    setText(m_ui->lblStatus, view.status);
    static const QString titles[] = {QString(), QStringLiteral("Winner!"), QStringLiteral("A tie!"), QStringLiteral("Scores")};
    setText(m_ui->lblRound, titles[int(view.scene)]);
    const bool counting = view.clock != audience::Clock::Hidden;
    m_ui->lblCount->setVisible(counting);
    m_ui->prgTime->setVisible(view.clock == audience::Clock::Running);
    setText(m_ui->lblCount, view.count);
    setFlag(m_ui->lblCount, "timeUp", view.clock == audience::Clock::TimeUp);
    m_ui->prgTime->setValue(int(view.timeLeft * 1000));
    for (int i = 0; i < m_names.size(); ++i) {
        const bool inPlay = i < view.players.size();
        m_names[i]->setVisible(inPlay);
        m_scores[i]->setVisible(inPlay);
        if (!inPlay)
            continue;
        const audience::Player &p = view.players[i];
        setText(m_names[i], p.name);
        setText(m_scores[i], QString::number(p.score));
        setFlag(m_names[i], "turn", p.marked);
        setFlag(m_scores[i], "turn", p.marked);
        m_names[i]->setAccessibleName(p.name + (p.marked && view.scene == Scene::Question ? QStringLiteral(", their turn") : QString()));
    }
    // A match in two halves, a phrase in one; the winner or the tie in words.
    const QStringList lines = view.scene == Scene::Question ? view.question
                              : view.headline.isEmpty()     ? QStringList()
                                                            : QStringList{view.headline};
    for (int i = 0; i < m_questionLabels.size(); ++i) {
        m_questionLabels[i]->setVisible(i < lines.size());
        if (i < lines.size())
            setText(m_questionLabels[i], lines[i]);
    }
    if (arrangeRows() || before.players.size() != view.players.size() || before.scene != view.scene
        || before.clock != view.clock)
        fitFonts();
    else if (before.question != view.question)
        fitQuestion();
    // What changed in the same scene catches the room's eye.
    if (!isVisible() || before.scene != view.scene || before.players.size() != view.players.size())
        return;
    for (int i = 0; i < view.players.size(); ++i) {
        if (view.players[i].score != before.players[i].score)
            animate(m_scores[i], true);
        if (view.players[i].marked && !before.players[i].marked)
            animate(m_names[i], false);
    }
    if (view.question != before.question)
        for (QLabel *label : m_questionLabels)
            animate(label, false);
}

void frmAudience::animate(QWidget *widget, bool flash)
{
    // A flash fades an amber tint out; a fade brings the text in.
    QGraphicsEffect *effect = nullptr;
    std::function<void(qreal)> step;
    if (flash) {
        auto *tint = new QGraphicsColorizeEffect;
        tint->setColor(QColor(255, 190, 0));
        effect = tint;
        step = [tint](qreal strength) { tint->setStrength(strength); };
    } else {
        auto *fade = new QGraphicsOpacityEffect;
        effect = fade;
        step = [fade](qreal opacity) { fade->setOpacity(opacity); };
    }
    auto *animation = new QVariantAnimation(effect);
    animation->setDuration(AnimationMs);
    animation->setStartValue(flash ? 1.0 : 0.25);
    animation->setEndValue(flash ? 0.0 : 1.0);
    step(animation->startValue().toReal());
    connect(animation, &QVariantAnimation::valueChanged, effect, [step](const QVariant &value) { step(value.toReal()); });
    // Done, the label paints itself again, without the effect's detour.
    connect(animation, &QVariantAnimation::finished, widget, [widget, effect] {
        if (widget->graphicsEffect() == effect)
            widget->setGraphicsEffect(nullptr);
    });
    widget->setGraphicsEffect(effect);  // ends one still running
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

bool frmAudience::arrangeRows()
{
    using audience::Scene;
    const bool question = m_view.scene == Scene::Question;
    const int players = int(m_view.players.size());
    // Under a question the players sit in two columns from the fourth on,
    // and a long phrase keeps the room; a ranking reads down, five to a column.
    const int columns = (question ? players > 3 : players > 5) ? 2 : 1;
    const int rows = std::clamp((players + columns - 1) / columns, 2, 5);
    // Stretches of the question's two rows and the players' row: in a
    // ranking the players get what the question does not use; under a
    // question they get their rows' height (fitFonts) and the question the rest.
    const bool twoHalves = question && m_view.question.size() > 1;
    const int first = m_view.scene == Scene::Scoreboard ? 0 : 3, second = twoHalves ? 3 : 0;
    const int rest = question ? 0 : 9 - first - second;
    const double share = double(rest) / (1 + first + second + rest);
    m_ui->layoutShow->setRowStretch(0, question ? 0 : 1);
    m_ui->layoutShow->setRowStretch(1, first);
    m_ui->layoutShow->setRowStretch(2, second);
    m_ui->layoutShow->setRowStretch(3, rest);
    const bool changed = share != m_playersShare || columns != m_columns || rows != m_rows || twoHalves != m_twoHalves;
    m_playersShare = share;
    m_columns = columns;
    m_rows = rows;
    m_twoHalves = twoHalves;
    if (changed)
        for (int i = 0; i < m_names.size(); ++i)
            for (int part : {0, 1}) {
                QLabel *label = (part ? m_scores : m_names)[i];
                m_ui->layoutPlayers->removeWidget(label);
                m_ui->layoutPlayers->addWidget(label, i % rows, i / rows * 3 + part);
            }
    return changed;
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
    else {
        // Shift counts only beside Ctrl (Ctrl+Shift+Z): "+" often needs it.
        const Qt::KeyboardModifiers mods = event->modifiers();
        const Qt::KeyboardModifiers kept = (mods & Qt::KeypadModifier)
                                           | (mods & Qt::ControlModifier ? mods & (Qt::ControlModifier | Qt::ShiftModifier) : Qt::NoModifier);
        Q_EMIT hostKey(int(kept) | key);
    }
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
    setPixels(m_ui->lblCount, m_view.clock == audience::Clock::TimeUp ? h / 18 : h / 6, true);
    m_ui->prgTime->setFixedHeight(std::max(h / 80, 2));
    const bool twoColumns = m_columns == 2;
    m_ui->layoutPlayers->setColumnStretch(3, twoColumns ? 4 : 0);
    m_ui->layoutPlayers->setColumnStretch(4, twoColumns ? 1 : 0);
    m_ui->layoutPlayers->setColumnMinimumWidth(2, twoColumns ? margin : 0);
    m_ui->layoutPlayers->setVerticalSpacing(h / 120);
    // Under a question, names as large as two rows allow, a little smaller
    // for more; in a ranking, as tall as the players' part allows.
    const bool question = m_view.scene == audience::Scene::Question;
    const int pixels = question ? (m_rows <= 2 ? h / 14 : h / 16)
                                : std::min(h / 14, int(h * m_playersShare / m_rows) - h / 60);
    // A ranking of few players has room to spare: rows stay bars, not blocks.
    const int bar = question ? pixels * 5 / 4 : pixels * 8 / 5;
    for (int i = 0; i < m_names.size(); ++i) {
        setPixels(m_names[i], pixels, true);
        setPixels(m_scores[i], pixels, true);
        m_names[i]->setMaximumHeight(bar);
        m_scores[i]->setMaximumHeight(bar);
    }
    // Under a question, the players' rows and the question share the height
    // exactly: a wrapped label asks for the room its font needs, and the
    // last question's font must not push the players off the screen.
    const int rowsHeight = m_rows * bar + (m_rows - 1) * (h / 120), gap = margin / 2;
    const int status = m_ui->lblStatus->sizeHint().height();
    m_ui->layoutShow->setRowMinimumHeight(0, status);
    m_ui->layoutShow->setRowMinimumHeight(3, question ? rowsHeight : 0);
    int room = h - margin / 2 - margin - status - gap - rowsHeight - gap;
    if (m_view.clock == audience::Clock::Running)
        room -= m_ui->prgTime->maximumHeight() + gap;
    if (m_twoHalves)
        room = (room - gap) / 2;
    for (QLabel *label : m_questionLabels)
        label->setMaximumHeight(question ? std::max(room, 8) : QWIDGETSIZE_MAX);
    fitQuestion();
}

void frmAudience::fitQuestion()
{
    for (QLabel *label : m_questionLabels)
        if (label->isVisible())
            screenfit::fitText(label, height() * QuestionPoints);
}
