#pragma once
// The audience screen: what the room needs to see of the game, as large as
// the screen allows, on a display of its own (or over the host's window when
// there is only one). It shows what the main window hands it and nothing for
// the host alone; its keys go back to the main window.
#include "core/AudienceView.h"
#include "platform/LoggedWindow.h"
#include <QList>
#include <QPointer>
#include <QScreen>
#include <QStringList>

namespace Ui {
class frmAudience;
}
class QLabel;

class frmAudience : public LoggedWindow {
    Q_OBJECT
public:
    explicit frmAudience(QWidget *main);
    ~frmAudience() override;
    Ui::frmAudience *ui() const { return m_ui; }

    void Form_Load();
    // Full screen on the screen given, borderless.
    void showOn(QScreen *screen);
    QScreen *shownOn() const { return m_screen; }

    void showView(const audience::View &view);
    const audience::View &view() const { return m_view; }
    // A question's largest size in points, per pixel of the screen's height.
    static constexpr double QuestionPoints = 0.09;
    // A point flashes, the turn and a new question fade in, this long.
    static constexpr int AnimationMs = 200;

    // Black, or the game again ("B" and "." of a clicker).
    void toggleBlank();
    bool isBlank() const;

Q_SIGNALS:
    // PageUp or PageDown: the main window pages as for its own keys.
    void pageKey(int key);
    // Any other key, with the keypad's modifier only: the host's keys work here too.
    void hostKey(int key);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Every text at a size the screen's height allows.
    void fitFonts();
    void fitQuestion();
    // The players' columns and rows and the rows' shares of the height for
    // this scene; false when unchanged.
    bool arrangeRows();
    void animate(QWidget *widget, bool flash);
    Ui::frmAudience *m_ui;
    QPointer<QScreen> m_screen;
    audience::View m_view;
    double m_playersShare = 0.3;  // of the height, in a ranking
    int m_columns = 1, m_rows = 2;
    bool m_twoHalves = false;
    QList<QLabel *> m_questionLabels, m_names, m_scores;
};
