#pragma once
// The web pages the program opens, kept in one place.
#include <QString>

namespace links {
inline const QString ContactPage = QStringLiteral("https://tandrel.example.org/contact");
// Donations and new versions share one page.
inline const QString DonatePage = QStringLiteral("https://tandrel.example.org/donate");
inline const QString UpdatePage = DonatePage;
inline const QString VideoPage = QStringLiteral("https://tandrel.example.org/how-to-play-video");
}  // namespace links
