#pragma once
// A window of fixed design shown big: every control's place, size and font
// scaled by one factor to fill a screen, keeping the proportions, centred.
// The controls are laid out again, not a picture stretched, so text and
// pictures stay sharp at any size.
#include <QFont>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <vector>

class QLabel;
class QWidget;

namespace screenfit {

// The largest factor at which the design fits the room.
double factor(QSize design, QSize room);
// Where the scaled design's top left goes so that it sits in the middle.
QPoint offset(QSize design, QSize room, double factor);
QRect scaled(const QRect &design, double factor, QPoint offset = {});
QFont scaled(const QFont &design, double factor);
// The largest font, from largestPoints down a point at a time to 8, at which
// a label's text fits it, word-wrapped.
void fitText(QLabel *label, double largestPoints);

// Every control of a window as it was designed, to scale and to restore.
class Design {
public:
    explicit Design(QWidget *window);
    // Factor 1 at (0, 0) puts back exactly the design.
    void apply(double factor, QPoint offset);
    double currentFactor() const { return m_factor; }

private:
    struct Control {
        QWidget *widget;
        QRect geometry;
        QFont font;
        bool ownFont;
        bool onWindow;  // placed on the window itself, so moved to the middle
        double fitPoints;  // a question's largest font size, or 0
    };
    void collect(QWidget *parent, bool onWindow);
    QWidget *m_window;
    QFont m_windowFont;
    std::vector<Control> m_controls;
    double m_factor = 1;
};

// While installed on the application, every window that opens (a dialog, a
// message box, an editor) is shown at the factor too: its fonts scaled, and
// its size with them. Windows laid out by hand scale as a Design.
class OtherWindows : public QObject {
public:
    OtherWindows(QWidget *main, double factor);
    ~OtherWindows() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fit(QWidget *window) const;
    void place(QWidget *window) const;
    QWidget *m_main;
    double m_factor;
};

}  // namespace screenfit
