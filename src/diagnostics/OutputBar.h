#pragma once

#include <QList>
#include <QWidget>

class QAction;
class QGridLayout;
class QToolButton;

namespace fenrik {

/// A check button for each output of a node, in one row or, from 14 on, in two. Each has an action that bears the
/// output's number as its name. To the keyboard the bar is one stop of the Tab key; the arrow keys, Home and End move
/// among the buttons that can be pressed.
class OutputBar : public QWidget {
    Q_OBJECT

public:
    explicit OutputBar(QWidget* parent = nullptr);

    /// Buttons 1 to `count`, all released; those that are there are used again.
    void SetCount(int count);
    [[nodiscard]] int Count() const { return int(mButtons.size()); }

    /// Number of buttons in a row.
    [[nodiscard]] static int Columns(int count);

    // A number that is not there is ignored.
    void EnableButton(int number, bool enabled);
    void UpdateButton(int number, const QString& toolTip, const QString& icon, bool pressed);

Q_SIGNALS:
    /// The user has pressed or released a button.
    void ButtonClicked(int number, bool pressed);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddButton(int number);
    void OrderButtons();
    [[nodiscard]] int ButtonWidth() const;
    [[nodiscard]] bool Moves(int key);
    void MoveTo(int number);
    void SetStop(int number);
    [[nodiscard]] int NextEnabled(int from, int step) const;
    [[nodiscard]] QToolButton* Button(int number) const { return mButtons.value(number - 1); }

    QGridLayout* mLayout;  // owned by the widget
    QList<QToolButton*> mButtons;
    int mStop = 0;  // number of the button that Tab goes to
};

}  // namespace fenrik
