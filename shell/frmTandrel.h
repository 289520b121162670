#pragma once
#include <QWidget>
#include <array>

namespace Ui {
class frmTandrel;
}
class QLabel;
class QLineEdit;
class QRadioButton;
class QToolButton;

// The window in which the game is played.
class frmTandrel : public QWidget {
    Q_OBJECT
public:
    explicit frmTandrel(QWidget *parent = nullptr);
    ~frmTandrel() override;

    // Start-up: runs once, after the window is made and before it is shown.
    void Form_Load();

    // Rows: the row whose turn it is, and every other row.
    static constexpr QRgb HighlightColour = qRgb(255, 224, 192);
    static constexpr QRgb PlainColour = qRgb(201, 207, 214);
    void paintRow(int row, bool current);

    // The control arrays, by index.
    std::array<QLineEdit *, 10> txtPlayer{}, txtCounter{};
    std::array<QToolButton *, 10> clkUp{}, clkDown{};
    std::array<QLabel *, 2> lblName{};
    std::array<QRadioButton *, 2> OptTimer{}, optSound{};

    Ui::frmTandrel *ui() const { return m_ui; }

    // Set for a second copy of the program: closing then asks nothing.
    bool ExitWithoutPrompt = false;

protected:
    void closeEvent(QCloseEvent *event) override;  // Form_Unload

private:
    void closeOtherWindows();
    Ui::frmTandrel *m_ui;
    bool m_ending = false;
};
