#include "Checks.h"
#include "core/QuestionRules.h"
#include "core/RepeatFilter.h"
#include "files/ConfigFile.h"
#include "files/Journal.h"
#include "platform/Errors.h"
#include "platform/Numeric.h"
#include "platform/TextFiles.h"
#include "shell/RtfReader.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QStringDecoder>
#include <QStringList>
#include <QTextDocument>
#include <algorithm>

namespace fuzzcheck {

namespace {
QStringList cutInPieces(QByteArrayView data, qsizetype piece)
{
    QStringList lines;
    auto keep = [&](const QString &line) {
        lines.append(line);
        return true;
    };
    platform::LineSplitter splitter;
    for (qsizetype at = 0; at < data.size(); at += piece)
        splitter.feed(data.sliced(at, std::min(piece, data.size() - at)), keep);
    splitter.finish(keep);
    return lines;
}

// Line ends and byte order marks as the reader documents them, done the
// slow, obvious way on the whole text.
QStringList cutPlainly(QByteArrayView data)
{
    auto cut = [](auto text) {
        text.replace("\r\n", "\n").replace('\r', '\n');
        auto parts = text.split('\n');
        if (parts.last().isEmpty())
            parts.removeLast();
        return parts;
    };
    QStringList lines;
    const bool le = data.startsWith("\xFF\xFE"), be = data.startsWith("\xFE\xFF");
    if (le || be) {
        QStringDecoder utf16(le ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
        return cut(QString(utf16.decode(data.sliced(2))));
    }
    if (data.startsWith("\xEF\xBB\xBF"))
        data = data.sliced(3);
    for (const QByteArray &part : cut(data.toByteArray())) {
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = utf8.decode(part);
        lines.append(utf8.hasError() ? QString::fromLatin1(part) : text);
    }
    return lines;
}

QStringList acceptLiterally(questions::Kind kind, const QStringList &lines)
{
    // Lines hold no line ends, so one search of the accepted entries joined
    // by LF finds exactly the entries that hold the candidate.
    QStringList accepted;
    QString joined;
    for (const QString &line : lines) {
        const auto entry = kind == questions::Kind::Match ? questions::literal::matchCandidate(line)
                                                          : questions::literal::phraseCandidate(line);
        if (!entry || joined.contains(*entry))
            continue;
        accepted.append(*entry);
        joined += *entry + QLatin1Char('\n');
    }
    return accepted.mid(0, questions::MaxDeckEntries);
}

// The repeat rule itself: a line is kept unless it occurs inside one kept
// before it. Lines hold no line ends, so one search of the kept lines joined
// by LF finds exactly the lines inside one.
std::vector<bool> keptLiterally(const QStringList &lines)
{
    std::vector<bool> kept;
    QString joined;
    for (const QString &line : lines) {
        kept.push_back(kept.empty() || !joined.contains(line));
        if (kept.back())
            joined += line + QLatin1Char('\n');
    }
    return kept;
}

QString differs(const char *what, const QStringList &a, const QStringList &b)
{
    qsizetype i = 0;
    while (i < a.size() && i < b.size() && a[i] == b[i])
        ++i;
    auto shown = [](const QString &line) { return QString::fromLatin1(line.toUtf8().toPercentEncoding(" ")); };
    return QStringLiteral("%1 differ: %2 against %3 lines; at %4: [%5] against [%6]")
        .arg(QLatin1String(what))
        .arg(a.size())
        .arg(b.size())
        .arg(i)
        .arg(shown(a.value(i)), shown(b.value(i)));
}
}  // namespace

QString questionFile(QByteArrayView data)
{
    if (data.isEmpty())
        return {};
    const auto kind = (data[0] & 1) ? questions::Kind::Phrase : questions::Kind::Match;
    const qsizetype piece = 1 + (quint8(data[0]) >> 1);
    data = data.sliced(1);

    const QStringList lines = cutInPieces(data, piece);
    if (const QStringList whole = cutInPieces(data, qMax<qsizetype>(1, data.size())); lines != whole)
        return differs("lines cut in pieces and whole", lines, whole);
    if (const QStringList plain = cutPlainly(data); lines != plain)
        return differs("lines cut by the reader and plainly", lines, plain);

    QStringList candidates;
    for (const QString &line : lines)
        if (auto entry = questions::candidate(kind, line))
            candidates << *entry;
    const std::vector<bool> rule = keptLiterally(candidates);
    if (RepeatFilter::keepBySuffixArray(candidates) != rule)
        return QStringLiteral("the repeat check by the suffix array and the rule differ");
    if (const auto anchored = RepeatFilter::keepByAnchors(candidates); anchored && *anchored != rule)
        return QStringLiteral("the repeat check by anchors and the rule differ");
    const QStringList fast = questions::acceptLines(kind, lines);
    const QStringList literal = acceptLiterally(kind, lines);
    if (fast != literal)
        return differs("accepted entries", fast, literal);
    return {};
}

QString configFile(QByteArrayView data)
{
    static const char *const Names[] = {"TimerTime", "SoundContinual", "Buzzer", "Sound", "Timer"};
    QString failure;
    auto check = [&](const QString &line) {
        std::optional<config::Setting> setting;
        try {
            setting = config::readLine(line);
        } catch (const platform::RuntimeError &e) {
            if (e.number() != platform::err::Overflow)
                failure = QStringLiteral("failure %1 on [%2]").arg(e.number()).arg(line);
            return failure.isEmpty();
        }
        if (!setting)
            return true;
        const bool isLength = setting->key == config::Key::TimerTime;
        const bool inRange = isLength ? setting->value >= 0 && setting->value <= 120 && setting->value % 10 == 0
                                            && platform::isNumeric(setting->text)
                                            && platform::toInt16(setting->text) == setting->value
                                      : setting->value == 0 || setting->value == 1;
        if (!inRange) {
            failure = QStringLiteral("setting out of range from [%1]").arg(line);
            return false;
        }
        const QString written = QLatin1String(Names[int(setting->key)]) + QStringLiteral(": ") + setting->text;
        const auto again = config::readLine(written);
        if (!again || again->key != setting->key || again->value != setting->value) {
            failure = QStringLiteral("[%1] does not read back from [%2]").arg(line, written);
            return false;
        }
        return true;
    };
    platform::LineSplitter splitter;
    if (splitter.feed(data, check))
        splitter.finish(check);
    return failure;
}

QString rulesDocument(QByteArrayView data)
{
    const QByteArray bytes = data.toByteArray();
    QTextDocument document;
    const bool isRtf = rtf::read(bytes, &document);
    if (isRtf != bytes.startsWith("{\\rtf"))
        return QStringLiteral("RTF recognised wrongly");
    const qsizetype shown = document.toPlainText().size();
    if (shown > bytes.size() + 1)
        return QStringLiteral("%1 characters shown for %2 bytes").arg(shown).arg(bytes.size());
    return {};
}

QString keptGame(QByteArrayView data)
{
    const QString folder = QStringLiteral("/fuzz/folder");
    // Also with its sum made right, so the bytes reach the reader past it.
    const QByteArray bytes = data.toByteArray();
    const QByteArray summed = bytes + "sum " + QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex() + '\n';
    for (const QByteArray &input : {bytes, summed}) {
        const std::optional<journal::Read> read = journal::decode(input, folder);
        if (!read)
            continue;
        if (journal::decode(input, QStringLiteral("/another/folder")))
            return QStringLiteral("another folder's file read");
        const game::Game::Snapshot &g = read->kept.game;
        const bool inRange = g.playerCount >= 2 && g.playerCount <= game::MaxPlayers && g.current >= 0
                             && g.current < g.playerCount && g.round >= 1 && g.scoreToWin >= 5 && g.scoreToWin <= 30
                             && g.scoreToWin % 5 == 0 && (read->kept.tab == 0 || read->kept.tab == 1)
                             && std::all_of(g.scores.begin(), g.scores.end(), [](qint16 s) { return s >= 0; });
        if (!inRange)
            return QStringLiteral("a number out of range");
        // Dealt from questions of that many, and written again, it reads back the same.
        journal::Kept again = read->kept;
        for (size_t k : {0u, 1u}) {
            const journal::Deck &d = read->decks[k];
            if (!d.order.isEmpty() && (d.position < 1 || d.position > d.order.size()))
                return QStringLiteral("a deck's place out of range");
            for (int i : d.order)
                again.game.decks[k] << QString::asprintf("q%06d", i);
        }
        const std::optional<journal::Read> back = journal::decode(journal::encode(again, folder).toUtf8(), folder);
        if (!back)
            return QStringLiteral("written again, it does not read");
        const game::Game::Snapshot &b = back->kept.game;
        const bool same = b.names == g.names && b.scores == g.scores && b.playerCount == g.playerCount
                          && b.scoreToWin == g.scoreToWin && b.current == g.current && b.round == g.round
                          && b.positions == g.positions && back->kept.tab == read->kept.tab
                          && back->decks[0].order == read->decks[0].order && back->decks[1].order == read->decks[1].order;
        if (!same)
            return QStringLiteral("written again, it reads back otherwise");
    }
    return {};
}

}  // namespace fuzzcheck
