#pragma once
// The game kept as it is played: after every change, the whole game is
// written to one small file in the user's data folder, one file per program
// folder (one copy of the program runs per folder). A kill, a flat battery
// or the exit question loses nothing the file had; the next start can bring
// the game back. The file never holds a question's text: a deck is kept as
// the order of its questions among the file's, with a sum of those
// questions, so a question file edited since is noticed.
#include "core/Game.h"
#include <QByteArray>
#include <QList>
#include <QString>
#include <array>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace journal {

// The game and the tab in front.
struct Kept {
    game::Game::Snapshot game;
    int tab = 0;
};

// A deck as the file keeps it.
struct Deck {
    QByteArray sum;     // of the questions it was dealt from, sorted
    QList<int> order;   // each entry's place among them; empty: never dealt
    qint16 position = 0;
};

// What a kept file says. The game's decks are left empty: bringBack fills
// them from the question files.
struct Read {
    Kept kept;
    std::array<Deck, 2> decks;
};

// This program folder's file in the data folder.
QString pathFor(const QString &dataDir, const QString &programDir);

// The file's text; only a file written for this program folder reads back.
QString encode(const Kept &kept, const QString &programDir);
// Nothing for a file damaged, cut short, foreign or from a newer version.
std::optional<Read> decode(const QByteArray &bytes, const QString &programDir);
// The file itself; nothing when it is missing or cannot be read.
std::optional<Read> readFile(const QString &path, const QString &programDir);

// A kept deck dealt again from its question file's accepted entries (in
// file order): in the same order at the same place when they are the ones
// it was dealt from (Same); otherwise (Afresh) the file's entries as they
// are, at the first, for the caller to shuffle.
enum class Back { Same, Afresh, Missing };
Back bringBack(const Deck &kept, const QStringList &fileEntries, QStringList &entries, qint16 &position);

// Writes each game it is given, in the background so no Next waits for the
// disk; a game given while one is being written replaces any still waiting.
// A folder that takes no files only means nothing is kept.
class Writer {
public:
    Writer(const QString &path, const QString &programDir);
    ~Writer();  // what is waiting is written first
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void keep(const Kept &kept);
    // Waits until everything given is written, or has failed.
    void flush();
    // Games are numbered from 1 as they are given: the last one that reached
    // the disk (a later one replaces any still waiting), 0 for none yet.
    quint64 written() const;

private:
    void run();
    const QString &orderOf(int kind, const QStringList &deck);

    const QString m_path, m_programDir;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake, m_idle;
    std::optional<Kept> m_waiting;
    quint64 m_given = 0, m_done = 0, m_written = 0;
    bool m_stop = false;
    // The writer's own: a deck's order, worked out once per deal.
    std::array<QStringList, 2> m_dealt;
    std::array<QString, 2> m_dealtOrder;
    std::thread m_thread;  // last: starts once the rest is ready
};

}  // namespace journal
