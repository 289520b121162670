#include "shell/BigText.h"
#include <QCache>
#include <QGlyphRun>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOption>
#include <QTextLayout>
#include <cmath>

namespace bigtext {
namespace {

struct GlyphKey {
    QString font;
    int pixels;
    int weight;
    quint32 glyph;
    QRgb colour;
    bool operator==(const GlyphKey &) const = default;
};

size_t qHash(const GlyphKey &k, size_t seed = 0)
{
    return qHashMulti(seed, k.font, k.pixels, k.weight, k.glyph, k.colour);
}

// Cost in bytes: a question of a new size adds about a megabyte.
QCache<GlyphKey, QImage> &glyphs()
{
    static QCache<GlyphKey, QImage> cache(32 << 20);
    return cache;
}

const QImage &glyphPicture(const QRawFont &font, quint32 glyph, QRgb colour)
{
    const GlyphKey key{font.familyName() + font.styleName(), int(font.pixelSize()), font.weight(), glyph, colour};
    if (QImage *found = glyphs().object(key))
        return *found;
    const QImage alpha = font.alphaMapForGlyph(glyph, QRawFont::PixelAntialiasing);
    auto *picture = new QImage(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *from = alpha.constScanLine(y);
        auto *to = reinterpret_cast<QRgb *>(picture->scanLine(y));
        for (int x = 0; x < alpha.width(); ++x)
            to[x] = qPremultiply(qRgba(qRed(colour), qGreen(colour), qBlue(colour), from[x] * qAlpha(colour) / 255));
    }
    const QImage &shown = *picture;
    glyphs().insert(key, picture, std::max<qsizetype>(picture->sizeInBytes(), 1));
    return shown;
}

void paintLabel(QLabel *label)
{
    QPainter painter(label);
    // The style sheet's background and border, as the label draws them.
    QStyleOption option;
    option.initFrom(label);
    label->style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, label);

    // The room the label itself gives its text: margin and indent, where a
    // negative indent beside a frame is half an "x".
    const Qt::Alignment align = QStyle::visualAlignment(label->layoutDirection(), label->alignment());
    const int margin = label->margin();
    QRect room = label->contentsRect().marginsRemoved(QMargins(margin, margin, margin, margin));
    int indent = label->indent();
    if (indent < 0 && label->frameWidth() > 0)
        indent = label->fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2 - margin;
    if (indent > 0)
        room = room.marginsRemoved(QMargins(align & Qt::AlignLeft ? indent : 0, align & Qt::AlignTop ? indent : 0,
                                            align & Qt::AlignRight ? indent : 0, align & Qt::AlignBottom ? indent : 0));
    QTextLayout layout(label->text(), label->font());
    QTextOption textOption(align & Qt::AlignHorizontal_Mask);
    textOption.setWrapMode(label->wordWrap() ? QTextOption::WordWrap : QTextOption::NoWrap);
    layout.setTextOption(textOption);
    layout.beginLayout();
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    // Whole pixels, as the label places its text.
    const int textHeight = int(std::ceil(height));
    const int top = align & Qt::AlignTop      ? room.top()
                    : align & Qt::AlignBottom ? room.bottom() + 1 - textHeight
                                              : room.top() + (room.height() - textHeight) / 2;
    const QRgb colour = label->palette().color(label->foregroundRole()).rgba();
    painter.setClipRect(label->contentsRect());
    for (const QGlyphRun &run : layout.glyphRuns()) {
        const QRawFont font = run.rawFont();
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        for (qsizetype i = 0; i < indexes.size(); ++i) {
            const QRectF box = font.boundingRect(indexes[i]);
            const QPointF at(std::round(room.left() + positions[i].x()) + std::floor(box.left()),
                             std::round(top + positions[i].y()) + std::floor(box.top()));
            painter.drawImage(at, glyphPicture(font, indexes[i], colour));
        }
    }
}

}  // namespace

void Painter::install(QLabel *label)
{
    label->installEventFilter(this);
}

bool Painter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        auto *label = static_cast<QLabel *>(watched);
        const bool plain = label->textFormat() == Qt::PlainText
                           || (label->textFormat() == Qt::AutoText && !Qt::mightBeRichText(label->text()));
        if (plain && QFontInfo(label->font()).pixelSize() > CachedPixels) {
            paintLabel(label);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace bigtext
