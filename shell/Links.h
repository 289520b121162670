#pragma once
// The web pages the program opens, kept in one place.
#include <QString>

namespace links {
inline const QString ProjectSite = QStringLiteral("https://tandrel.example.org");
inline const QString ContactPage = QStringLiteral("https://tandrel.example.org/contact");
// Donations and new versions share one page.
inline const QString DonatePage = QStringLiteral("https://tandrel.example.org/donate");
inline const QString UpdatePage = DonatePage;
inline const QString VideoPage = QStringLiteral("https://tandrel.example.org/how-to-play-video");
// Where a host finds the sound decoders the music and buzzer need.
inline const QString MediaHelpPage = QStringLiteral("https://gstreamer.freedesktop.org/documentation/installing/on-linux.html");
}  // namespace links
