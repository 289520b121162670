#pragma once
// Text for the far end of a room. Qt draws glyphs larger than 64 pixels as
// outlines, every time: a long phrase at that size takes more than a frame to
// paint, and asking Qt to cache larger glyphs leaves them blank. Installed on
// a label, this paints its plain text from pictures of each glyph, drawn once
// per font, size and colour; below the limit the label paints itself.
#include <QObject>

class QLabel;

namespace bigtext {

class Painter : public QObject {
public:
    using QObject::QObject;
    // The label's text is painted from the glyph pictures from now on.
    void install(QLabel *label);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

// Qt's own glyph cache holds nothing larger.
constexpr int CachedPixels = 64;

}  // namespace bigtext
