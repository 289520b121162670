// The evening kept: the game written as it is played, brought back by
// Ctrl+R after a crash or a flat battery, and a wrong change undone by
// Ctrl+Z (Ctrl+Shift+Z redoes).
#include "core/Decks.h"
#include "files/Journal.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <QAccessible>
#include <QSignalBlocker>
#include <QTimer>

using Globals::Guarded;

namespace {
// Long enough to read twice, short enough not to stay in the way.
constexpr int NoticeMs = 6000;
}  // namespace

void frmTandrel::connectKept()
{
    m_game.changed = [this] { keepGame(); };
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this] {
        if (m_keptAny)  // a tab looked at is no reason to write over the last game
            keepGame();
    });
    m_noticeTimer = new QTimer(this);
    m_noticeTimer->setSingleShot(true);
    connect(m_noticeTimer, &QTimer::timeout, m_ui->lblNotice, &QWidget::hide);
    m_ui->lblNotice->hide();
    m_hostKeys.insert((Qt::CTRL | Qt::Key_Z).toCombined(), [this] { undoChange(); });
    m_hostKeys.insert((Qt::CTRL | Qt::SHIFT | Qt::Key_Z).toCombined(), [this] { redoChange(); });
    m_hostKeys.insert((Qt::CTRL | Qt::Key_R).toCombined(), [this] { resumeLastGame(); });
}

void frmTandrel::openJournal()
{
    const QString data = platform::app().dataDir();
    if (data.isEmpty())
        return;
    const QString folder = platform::app().programDir();
    const QString path = journal::pathFor(data, folder);
    m_lastGame = journal::readFile(path, folder);
    if (m_lastGame && !m_lastGame->kept.game.started())
        m_lastGame.reset();
    // The last game stays in its file until the host changes this one.
    m_journal = std::make_unique<journal::Writer>(path, folder);
    if (m_lastGame)
        showNotice(QStringLiteral("The last game was not finished: Ctrl+R brings it back"));
}

void frmTandrel::keepGame()
{
    if (!m_journal)
        return;
    m_journal->keep({m_game.snapshot(), m_ui->SSTab1->currentIndex()});
    m_keptAny = true;
}

void frmTandrel::showNotice(const QString &text)
{
    m_ui->lblNotice->setText(text);
    m_ui->lblNotice->setAccessibleName(text);
    m_ui->lblNotice->show();
    m_ui->lblNotice->raise();
    QAccessibleEvent alert(m_ui->lblNotice, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    m_noticeTimer->start(NoticeMs);
}

QString frmTandrel::notice() const
{
    return m_ui->lblNotice->isVisibleTo(this) ? m_ui->lblNotice->text() : QString();
}

void frmTandrel::undoChange()
{
    Guarded("undoChange", [&] {
        if (m_game.undo())
            paintGame();
    });
}

void frmTandrel::redoChange()
{
    Guarded("redoChange", [&] {
        if (m_game.redo())
            paintGame();
    });
}

void frmTandrel::resumeLastGame()
{
    Guarded("resumeLastGame", [&] {
        if (!m_lastGame) {
            showNotice(QStringLiteral("There is no unfinished game to bring back"));
            return;
        }
        if (m_game.snapshot().started()
            && platform::msgBox(QStringLiteral("Bring back the last game? The game on the screen now will be replaced."),
                                platform::mb::YesNoCancel, QStringLiteral("Bring Back the Last Game"))
                   != platform::mb::Yes)
            return;
        game::Game::Snapshot kept = m_lastGame->kept.game;
        QString told = QStringLiteral("The last game is back");
        for (questions::Kind kind : {questions::Kind::Match, questions::Kind::Phrase}) {
            const size_t k = size_t(kind);
            const journal::Deck &deck = m_lastGame->decks[k];
            if (deck.order.isEmpty())
                continue;  // never dealt then: the deck of now stays
            const QString name = kind == questions::Kind::Match ? decks::MatchFileName : decks::PhraseFileName;
            QStringList entries;
            try {
                const QString path = platform::programPath(name);
                if (platform::fileExists(path))
                    entries = decks::ReadEntries(kind, path);
            } catch (const std::exception &) {
                // unreadable now: as good as missing
            }
            switch (journal::bringBack(deck, entries, kept.decks[k], kept.positions[k])) {
            case journal::Back::Same:
                break;
            case journal::Back::Afresh:
                kept.decks[k] = Globals::ShuffleArray(kept.decks[k]);
                told += QStringLiteral("; ") + name + QStringLiteral(" has changed, so its questions were dealt afresh");
                break;
            case journal::Back::Missing:
                told += QStringLiteral("; ") + name + QStringLiteral(" has no questions now, so they could not come back");
                break;
            }
        }
        const int tab = m_lastGame->kept.tab;
        m_lastGame.reset();
        m_game.restore(kept);
        m_ui->SSTab1->setCurrentIndex(tab);
        paintGame();
        showNotice(told);
    });
}

void frmTandrel::showRows(int count)
{
    // Hidden rows keep their names and scores for when they come back.
    for (int i = 0; i < 10; ++i)
        for (QWidget *w : rowWidgets(i))
            w->setVisible(i < count);
}

void frmTandrel::paintGame()
{
    {
        // The lists show the game's choice; choosing it again would move the turn.
        const QSignalBlocker players(m_ui->cmbNumPlayers), target(m_ui->cmbScoreToWin);
        m_ui->cmbNumPlayers->setCurrentText(QString::number(m_game.playerCount()));
        m_ui->cmbScoreToWin->setCurrentText(QString::number(m_game.scoreToWin()));
    }
    showRows(m_game.playerCount());
    for (int i = 0; i < 10; ++i)
        if (txtPlayer[size_t(i)]->text() != m_game.finishedName(i))
            txtPlayer[size_t(i)]->setText(m_game.finishedName(i));
    for (questions::Kind kind : {questions::Kind::Match, questions::Kind::Phrase})
        if (m_game.deck(kind).shown())
            showQuestion(kind);
    paintPlayers();
}
