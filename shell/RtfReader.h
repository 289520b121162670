#pragma once
// A small RTF reader for the rules viewer: Qt reads HTML and Markdown but not RTF.
#include <QByteArray>

class QTextDocument;

namespace rtf {

// Replaces the document's contents with the RTF in bytes: text, bold, italic,
// underline, font size, colour, alignment, paragraphs, line breaks and tabs.
// Pictures, headers, footnotes and the other destinations are left out.
// Returns false when the bytes are not RTF at all (they do not start with "{\rtf");
// the document then shows them as plain text, decoded as question files are,
// so that a rules file saved as text still shows.
// Any input is read in linear time without crashing.
bool read(const QByteArray &bytes, QTextDocument *document);

}  // namespace rtf
