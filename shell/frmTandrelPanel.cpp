// The player panel: the two lists, giving the turn by double-click, and the
// keyboard paging that works from every control of the window.
#include "platform/Globals.h"
#include "platform/Numeric.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>

using Globals::Guarded;
using platform::toInt16;

void frmTandrel::connectPanel()
{
    connect(m_ui->cmbNumPlayers, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)  // emptying the list is no choice
            cmbNumPlayers_Click();
    });
    connect(m_ui->cmbScoreToWin, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            cmbScoreToWin_Click();
    });

    // Every control with a keyboard handler, named after its control.
    const QList<QWidget *> keyed = {
        m_ui->clkAbout, m_ui->clkConfig, m_ui->clkContact, m_ui->clkDonate, m_ui->clkEdit, m_ui->clkHowToPlay,
        m_ui->clkUpdate, m_ui->clkStart, m_ui->clkNext, m_ui->clkPrev, m_ui->clkExit, m_ui->clkStartPhrase,
        m_ui->clkNextPhrase, m_ui->clkPrevPhrase, m_ui->clkExitPhrase, m_ui->clkRound, m_ui->OptTimer_0,
        m_ui->OptTimer_1, m_ui->txtTimer, m_ui->optSound_0, m_ui->optSound_1, m_ui->hsc1, m_ui->SSTab1,
        m_ui->cmbNumPlayers, m_ui->cmbScoreToWin};
    static const QRegularExpression itemIndex(QStringLiteral("_\\d+$"));
    auto watch = [this](QWidget *w, const QString &name) {
        m_keyHandlers.insert(w, QString(name).remove(itemIndex) + QStringLiteral("_KeyDown"));
        w->installEventFilter(this);
    };
    for (QWidget *w : keyed)
        watch(w, w->objectName());
    for (int i = 0; i < 10; ++i)
        for (QWidget *w : rowWidgets(i))
            watch(w, w->objectName());

    // Displays and the video link never keep the focus, so a clicker keeps
    // working after the host clicked them.
    m_ui->clkStatusMatch->setFocusPolicy(Qt::NoFocus);
    m_ui->clkStatusPhrase->setFocusPolicy(Qt::NoFocus);
    m_ui->clkVideo->setFocusPolicy(Qt::TabFocus);
}

qint16 frmTandrel::keyCodeOf(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_PageUp: return KeyPageUp;
    case Qt::Key_PageDown: return KeyPageDown;
    case Qt::Key_Left: return KeyLeft;
    case Qt::Key_Up: return KeyUp;
    case Qt::Key_Right: return KeyRight;
    case Qt::Key_Down: return KeyDown;
    case Qt::Key_End: return KeyEnd;
    case Qt::Key_Home: return KeyHome;
    default: return 0;  // no key the game acts on
    }
}

bool frmTandrel::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto handler = m_keyHandlers.constFind(watched);
        if (handler == m_keyHandlers.constEnd())
            break;
        auto *key = static_cast<QKeyEvent *>(event);
        if (watched == m_ui->cmbNumPlayers || watched == m_ui->cmbScoreToWin)
            return listKeyPress(watched, key);
        qint16 code = keyCodeOf(key->key());
        if (!qobject_cast<QLineEdit *>(watched))  // a text box keeps its arrows
            code = clickerCode(code);
        Guarded(*handler, [&] { PageUpDown(code); });
        // Paging keys belong to the game, never to the control.
        return code == KeyPageUp || code == KeyPageDown;
    }
    case QEvent::MouseButtonDblClick:
        for (int i = 0; i < 10; ++i)
            if (watched == txtPlayer[size_t(i)])
                txtPlayer_DblClick(qint16(i));
        break;
    case QEvent::Wheel:
        // A wheel turned over a list while the host scrolls must not change
        // the players or the target.
        if (watched == m_ui->cmbNumPlayers || watched == m_ui->cmbScoreToWin)
            return true;
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool frmTandrel::listKeyPress(QObject *list, QKeyEvent *event)
{
    const qint16 code = keyCodeOf(event->key());
    const int shift = int(event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) >> 25;
    const bool players = list == m_ui->cmbNumPlayers;
    if (players)
        cmbNumPlayers_KeyDown(code, shift);
    else
        cmbScoreToWin_KeyDown(code, shift);

    // Arrows reach the list and their change is undone at once; keys that
    // would pick an entry directly never reach it.
    const bool arrow = code >= KeyLeft && code <= KeyDown;
    const bool typed = !event->text().trimmed().isEmpty() && event->text().at(0).isPrint();
    const bool picks = code == KeyPageUp || code == KeyPageDown || code == KeyEnd || code == KeyHome || (typed && !arrow);
    if (!picks)
        list->event(event);  // the list itself, past this filter
    // A key that changed nothing leaves no undo waiting for the next mouse choice.
    (players ? m_numPlayersKeyed : m_scoreToWinKeyed) = false;
    return true;
}

qint16 frmTandrel::clickerCode(qint16 keyCode) const
{
    if (!m_show.arrowKeysPage)
        return keyCode;
    if (keyCode == KeyRight || keyCode == KeyDown)
        return KeyPageDown;
    return keyCode == KeyLeft || keyCode == KeyUp ? qint16(KeyPageUp) : keyCode;
}

void frmTandrel::PageUpDown(qint16 &keyCode)
{
    Guarded("PageUpDown", [&] {
        Tab &tab = m_tabs[size_t(m_ui->SSTab1->currentIndex())];
        if (!tabShown(m_ui->SSTab1->currentIndex()))
            return;
        if (keyCode == KeyPageUp)
            prevTab(tab);
        else if (keyCode == KeyPageDown)
            nextTab(tab);
    });
}

void frmTandrel::cmbNumPlayers_Click()
{
    Guarded("cmbNumPlayers_Click", [&] {
        if (undoKeyedChange(m_numPlayersKeyed, m_numPlayersRestoring, m_ui->cmbNumPlayers, m_numPlayersBefore))
            return;
        const qint16 n = toInt16(m_ui->cmbNumPlayers->currentText());
        showRows(n);
        m_game.setPlayerCount(n);
        paintPlayers();
    });
}

std::array<QWidget *, 4> frmTandrel::rowWidgets(int row) const
{
    return {txtPlayer[size_t(row)], txtCounter[size_t(row)], clkUp[size_t(row)], clkDown[size_t(row)]};
}

// True when this change of a list is not the host's choice: it is the undo
// of a key's change (then swallowed), or a key's change (then undone).
bool frmTandrel::undoKeyedChange(bool &keyed, bool &restoring, QComboBox *list, const QString &before)
{
    if (restoring) {
        restoring = false;
        return true;
    }
    if (!keyed)
        return false;
    keyed = false;
    restoring = true;
    list->setCurrentText(before);  // reports a change of its own, swallowed above
    return true;
}

bool frmTandrel::keyMarksList(qint16 &keyCode)
{
    // Paging keys page and never reach the list; the arrows reach it, so
    // they mark its next change as one to undo.
    if (keyCode == KeyPageUp || keyCode == KeyPageDown)
        PageUpDown(keyCode);
    return keyCode >= KeyLeft && keyCode <= KeyDown;
}

void frmTandrel::cmbNumPlayers_KeyDown(qint16 keyCode, int)
{
    Guarded("cmbNumPlayers_KeyDown", [&] {
        if (!keyMarksList(keyCode))
            return;
        m_numPlayersKeyed = true;
        m_numPlayersBefore = m_ui->cmbNumPlayers->currentText();
    });
}

void frmTandrel::cmbScoreToWin_Click()
{
    Guarded("cmbScoreToWin_Click", [&] {
        // A choice by the mouse counts from the next round's end; a key's is undone.
        if (!undoKeyedChange(m_scoreToWinKeyed, m_scoreToWinRestoring, m_ui->cmbScoreToWin,
                             QString::number(m_scoreToWinBefore)))
            m_game.setScoreToWin(toInt16(m_ui->cmbScoreToWin->currentText()));
    });
}

void frmTandrel::cmbScoreToWin_KeyDown(qint16 keyCode, int)
{
    Guarded("cmbScoreToWin_KeyDown", [&] {
        if (!keyMarksList(keyCode))
            return;
        m_scoreToWinKeyed = true;
        m_scoreToWinBefore = toInt16(m_ui->cmbScoreToWin->currentText());
    });
}

void frmTandrel::txtPlayer_DblClick(qint16 index)
{
    Guarded("txtPlayer_DblClick", [&] {
        m_game.giveTurn(index);
        paintPlayers();
    });
}
