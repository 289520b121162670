#include "shell/ScreenFit.h"
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace screenfit {

double factor(QSize design, QSize room)
{
    return std::min(double(room.width()) / design.width(), double(room.height()) / design.height());
}

QPoint offset(QSize design, QSize room, double factor)
{
    return {int(std::lround((room.width() - design.width() * factor) / 2)),
            int(std::lround((room.height() - design.height() * factor) / 2))};
}

QRect scaled(const QRect &design, double factor, QPoint offset)
{
    // Edges are scaled, not sizes, so neighbours that touched still touch.
    const auto at = [factor](int v) { return int(std::lround(v * factor)); };
    const int left = at(design.left()), top = at(design.top());
    return QRect(left, top, at(design.left() + design.width()) - left, at(design.top() + design.height()) - top)
        .translated(offset);
}

QFont scaled(const QFont &design, double factor)
{
    QFont font = design;
    if (design.pixelSize() > 0)
        font.setPixelSize(std::max(1, int(std::lround(design.pixelSize() * factor))));
    else
        font.setPointSizeF(design.pointSizeF() * factor);
    return font;
}

Design::Design(QWidget *window)
    : m_window(window), m_windowFont(window->font())
{
    collect(window, true);
}

void Design::collect(QWidget *parent, bool onWindow)
{
    for (QWidget *w : parent->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        // A control's own parts (named "qt_...", or not at all) are laid out by the control.
        if (w->objectName().isEmpty() || w->objectName().startsWith(QLatin1String("qt_")) || w->isWindow())
            continue;
        m_controls.push_back({w, w->geometry(), w->font(), w->testAttribute(Qt::WA_SetFont), onWindow,
                              w->property("designPointSize").toDouble()});
        if (auto *tabs = qobject_cast<QTabWidget *>(w)) {
            for (int i = 0; i < tabs->count(); ++i)  // the pages are placed by the tabs; their controls by us
                collect(tabs->widget(i), false);
        } else {
            collect(w, false);
        }
    }
}

void Design::apply(double factor, QPoint offset)
{
    m_factor = factor;
    m_window->setFont(scaled(m_windowFont, factor));
    for (const Control &c : m_controls) {
        if (c.ownFont) {
            c.widget->setFont(scaled(c.font, factor));
            // Under the program's style sheet a tab bar keeps the font it had.
            if (auto *tabs = qobject_cast<QTabWidget *>(c.widget))
                if (auto *bar = tabs->findChild<QTabBar *>())
                    bar->setFont(c.widget->font());
        }
        if (c.fitPoints > 0)
            c.widget->setProperty("designPointSize", c.fitPoints * factor);
        c.widget->setGeometry(scaled(c.geometry, factor, c.onWindow ? offset : QPoint()));
    }
}

}  // namespace screenfit
