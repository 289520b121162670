#include "core/Decks.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "platform/Globals.h"

namespace decks {

namespace {
const QString CrLf = QStringLiteral("\r\n");
}

bool CheckQuestionFile(const QString &path)
{
    if (platform::fileExists(path))
        return true;
    platform::msgBox(QStringLiteral("File ") + platform::shownPath(path)
                         + QStringLiteral(" does not exist, please create it from the Config menu item, or ") + CrLf
                         + QStringLiteral("performing an Update from the About menu pulldown will retrieve this "
                                          "file from the internet.")
                         + CrLf + CrLf,
                     platform::mb::OkOnly + platform::mb::Information, QStringLiteral("File Does Not Exist"));
    return false;
}

QStringList ReadEntries(questions::Kind kind, const QString &path)
{
    questions::Reader reader(kind);
    platform::readLines(path, [&](QString &line) { return reader.add(std::move(line)); });
    return reader.finish();
}

std::optional<QStringList> LoadDeck(questions::Kind kind, const QString &path)
{
    QStringList entries = ReadEntries(kind, path);
    if (entries.isEmpty()) {
        platform::msgBox(QStringLiteral("File ") + platform::shownPath(path)
                             + QStringLiteral(" does not contain any questions."),
                         platform::mb::OkOnly + platform::mb::Information, QStringLiteral("Exiting File Load"));
        return std::nullopt;
    }
    return Globals::ShuffleArray(std::move(entries));
}

}  // namespace decks
