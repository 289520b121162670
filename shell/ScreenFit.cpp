#include "shell/ScreenFit.h"
#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
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

void fitText(QLabel *label, double largestPoints)
{
    QFont font = label->font();
    const QRect room = label->contentsRect();
    const QString text = label->text().trimmed();
    const auto fits = [&](int step) {
        font.setPointSizeF(largestPoints - step);
        const QRect need = QFontMetrics(font).boundingRect(room, Qt::TextWordWrap | Qt::AlignCenter, text);
        return need.width() <= room.width() && need.height() <= room.height();
    };
    // A screen-high question starts near 200 points, so the size is halved
    // in, not stepped down.
    int low = 0, high = std::max(0, int(std::ceil(largestPoints - 8)));
    while (low < high) {
        const int middle = (low + high) / 2;
        if (fits(middle))
            high = middle;
        else
            low = middle + 1;
    }
    font.setPointSizeF(largestPoints - low);
    label->setFont(font);
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

// A document's own sizes (the rules' headings and text), which the font of
// the box that shows it does not reach.
static void scaleText(QTextDocument *document, double factor)
{
    struct Run { int from, to; qreal points; };
    std::vector<Run> runs;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it)
            if (const QTextFragment f = it.fragment(); f.charFormat().fontPointSize() > 0)
                runs.push_back({f.position(), f.position() + f.length(), f.charFormat().fontPointSize()});
    QTextCursor cursor(document);
    for (const Run &run : runs) {
        cursor.setPosition(run.from);
        cursor.setPosition(run.to, QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setFontPointSize(run.points * factor);
        cursor.mergeCharFormat(format);
    }
}

OtherWindows::OtherWindows(QWidget *main, double factor)
    : QObject(main), m_main(main), m_factor(factor)
{
    qApp->installEventFilter(this);
}

OtherWindows::~OtherWindows()
{
    qApp->removeEventFilter(this);
}

bool OtherWindows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show || !watched->isWidgetType())
        return false;
    auto *window = static_cast<QWidget *>(watched);
    const Qt::WindowType type = window->windowType();
    // A window that fills a screen of its own sizes itself.
    if (window == m_main || !window->isWindow() || (type != Qt::Dialog && type != Qt::Window) || window->isFullScreen()
        || window->property("screenFitFactor").toDouble() == m_factor)
        return false;
    window->setProperty("screenFitFactor", m_factor);
    fit(window);
    // Once shown, as a window manager may have placed it meanwhile.
    QMetaObject::invokeMethod(window, [this, window] { place(window); }, Qt::QueuedConnection);
    return false;
}

void OtherWindows::fit(QWidget *window) const
{
    // The program's style sheet sets a message's size; the box's own wins.
    if (auto *box = qobject_cast<QMessageBox *>(window))
        box->setStyleSheet(QStringLiteral("QLabel { font-size: %1pt; }").arg(13 * m_factor, 0, 'f', 1));
    if (window->layout()) {
        // Each control by itself: under a style sheet a font set on the
        // window no longer reaches controls already shown once. Pictures,
        // sizes set in the design and the layouts' gaps grow with the text.
        for (QWidget *w : window->findChildren<QWidget *>()) {
            w->setFont(scaled(w->font(), m_factor));
            if (!w->minimumSize().isNull())
                w->setMinimumSize(scaled(QRect(QPoint(), w->minimumSize()), m_factor).size());
            if (auto *reader = qobject_cast<QTextEdit *>(w); reader && reader->isReadOnly())
                scaleText(reader->document(), m_factor);
            if (auto *label = qobject_cast<QLabel *>(w); label && !label->pixmap().isNull())
                label->setPixmap(label->pixmap().scaled(scaled(QRect(QPoint(), label->pixmap().size()), m_factor).size(),
                                                        Qt::KeepAspectRatio, Qt::SmoothTransformation));
        }
        const auto grow = [this](int pixels) { return int(std::lround(pixels * m_factor)); };
        for (QLayout *layout : window->findChildren<QLayout *>()) {
            const QMargins m = layout->contentsMargins();
            layout->setContentsMargins(grow(m.left()), grow(m.top()), grow(m.right()), grow(m.bottom()));
            if (layout->spacing() >= 0)  // else the style's, which does not grow
                layout->setSpacing(grow(layout->spacing()));
        }
        window->setFont(scaled(window->font(), m_factor));
        // A window drawn at a size of its own keeps its proportions; a
        // message box sizes itself to its text.
        if (window->testAttribute(Qt::WA_Resized) && !qobject_cast<QMessageBox *>(window))
            window->setProperty("screenFitSize", scaled(QRect(QPoint(), window->size()), m_factor).size());
    } else {
        Design(window).apply(m_factor, QPoint());
        window->resize(scaled(QRect(QPoint(), window->size()), m_factor).size());
    }
}

void OtherWindows::place(QWidget *window) const
{
    if (QLayout *layout = window->layout()) {
        window->setMinimumSize(layout->minimumSize());
        window->adjustSize();
        const QSize designed = window->property("screenFitSize").toSize();
        if (designed.isValid()) {
            QSize size = designed.boundedTo(m_main->size()).expandedTo(window->size());
            if (layout->hasHeightForWidth())
                size.setHeight(std::max(size.height(), layout->totalHeightForWidth(size.width())));
            window->resize(size.boundedTo(m_main->size()));
        }
    }
    // Over the middle of the screen the game is on.
    window->move(m_main->geometry().center() - QPoint(window->width() / 2, window->height() / 2));
}

}  // namespace screenfit
