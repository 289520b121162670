#include "shell/Look.h"
#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QStyleOption>

// The pictures are compiled into the program's library, which must
// register them itself: once, as the program loads, before any window.
static bool loadPictures()
{
    Q_INIT_RESOURCE(tandrel);
    return true;
}
[[maybe_unused]] static const bool picturesLoaded = loadPictures();

namespace look {

QString styleSheet()
{
    return QStringLiteral(R"(
QPushButton {
    color: black;
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff6ea, stop:1 #ffd9b0);
    border: 2px solid rgb(160, 110, 60);
    border-radius: 7px;
    padding: 2px 10px;
}
QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fffaf3, stop:1 #ffe4c4); }
QPushButton:pressed { background: #f2c08e; }
QPushButton:focus { border-color: rgb(0, 110, 0); }
QPushButton:disabled { color: #8a8a8a; border-color: #c8b8a8; background: #f1ece6; }
QToolTip {
    color: black;
    background: #fff4e0;
    border: 1px solid rgb(160, 110, 60);
    padding: 4px;
    font-size: 12pt;
}
QMessageBox QLabel { font-size: 13pt; }
)");
}

namespace {
bool big(const QRect &rect)
{
    return std::min(rect.width(), rect.height()) >= Style::BigPixels;
}

// A solid triangle pointing one way, a third of the room's height.
void drawArrow(QPainter *painter, const QRect &room, Qt::ArrowType way, const QColor &colour)
{
    const double half = std::min(room.width(), room.height()) / 6.0;
    const QPointF c = QRectF(room).center();
    QPolygonF shape;
    switch (way) {
    case Qt::UpArrow: shape << c + QPointF(-1.6 * half, half) << c + QPointF(1.6 * half, half) << c + QPointF(0, -half); break;
    case Qt::DownArrow: shape << c + QPointF(-1.6 * half, -half) << c + QPointF(1.6 * half, -half) << c + QPointF(0, half); break;
    case Qt::LeftArrow: shape << c + QPointF(half, -1.6 * half) << c + QPointF(half, 1.6 * half) << c + QPointF(-half, 0); break;
    default: shape << c + QPointF(-half, -1.6 * half) << c + QPointF(-half, 1.6 * half) << c + QPointF(half, 0); break;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawPolygon(shape);
    painter->restore();
}
}  // namespace

int Style::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int base = QProxyStyle::pixelMetric(metric, option, widget);
    // Text of a size only a window shown big has (the font, not the
    // control's size, decides: a control's size follows these metrics).
    if (!widget || widget->fontMetrics().height() < BigPixels * 3 / 4)
        return base;
    switch (metric) {
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:  // as tall as a capital and a half of the text
        return std::max(base, widget->fontMetrics().capHeight() * 3 / 2);
    case PM_TabBarTabHSpace:
    case PM_TabBarTabVSpace:
    case PM_ButtonIconSize:
    case PM_SmallIconSize:  // a tab's margins and a button's icon grow with the text
        return base * widget->fontMetrics().height() / (BigPixels / 2);
    default:
        return base;
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    static const QHash<PrimitiveElement, Qt::ArrowType> arrows{{PE_IndicatorArrowUp, Qt::UpArrow},
                                                                {PE_IndicatorArrowDown, Qt::DownArrow},
                                                                {PE_IndicatorArrowLeft, Qt::LeftArrow},
                                                                {PE_IndicatorArrowRight, Qt::RightArrow}};
    if (arrows.contains(element) && big(option->rect))
        drawArrow(painter, option->rect, arrows.value(element), option->palette.color(QPalette::ButtonText));
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                               const QWidget *widget) const
{
    if (control != CC_ComboBox || !big(option->rect) || !(option->subControls & SC_ComboBoxArrow)) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // The list drawn without its arrow, then an arrow as big as the list.
    auto *combo = static_cast<const QStyleOptionComboBox *>(option);
    QStyleOptionComboBox without = *combo;
    without.subControls &= ~SC_ComboBoxArrow;
    QProxyStyle::drawComplexControl(control, &without, painter, widget);
    drawArrow(painter, subControlRect(control, option, SC_ComboBoxArrow, widget), Qt::DownArrow,
              option->palette.color(QPalette::ButtonText));
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part, const QWidget *widget) const
{
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    if (control != CC_ComboBox || !big(option->rect))
        return rect;
    // The arrow's room grows with the list's height; the text gives it up.
    const int arrow = option->rect.height();
    if (part == SC_ComboBoxArrow)
        rect.setLeft(std::min(rect.left(), option->rect.right() - arrow));
    else if (part == SC_ComboBoxEditField)
        rect.setRight(std::min(rect.right(), option->rect.right() - arrow));
    return rect;
}

void apply()
{
    // Once: the application owns the style from then on.
    static const bool styled = [] {
        QApplication::setStyle(new Style);
        return true;
    }();
    Q_UNUSED(styled);
    if (qApp->styleSheet() != styleSheet())
        qApp->setStyleSheet(styleSheet());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/tandrel.png")));
}

}  // namespace look
