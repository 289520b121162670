#pragma once
// The program's one look, put on every window: buttons drawn as the game's
// peach cards, large enough to read on a projector.
#include <QProxyStyle>
#include <QString>

namespace look {

// The platform's style, with the marks it draws at a fixed size (the score
// arrows, a list's arrow, option circles and check boxes) grown with their
// control when the game is shown big. At the usual size it changes nothing.
class Style : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
    // Controls this high and higher get marks of their size.
    static constexpr int BigPixels = 36;
};

QString styleSheet();
// Applies the look to every window of the program, now and later.
void apply();
}  // namespace look
