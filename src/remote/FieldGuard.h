#pragma once

#include <QObject>

#include <functional>
#include <vector>

class QWidget;

namespace fenrik {

/// Keeps the focus in a box of a window while the box holds an invalid value: neither Tab, nor a click, nor an access
/// key leads to another control of the window. Other windows, the box's own menu and `exit` can always be reached.
class FieldGuard : public QObject {
public:
    using IsValid = std::function<bool(const QWidget* box)>;

    /// A child of `window`, made when all of the window's controls are there.
    FieldGuard(QWidget& window, std::vector<QWidget*> boxes, const QWidget& exit, IsValid isValid);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool IsBox(const QObject* object) const;
    [[nodiscard]] bool MayGoTo(const QWidget* target) const;

    const QWidget& mWindow;
    std::vector<QWidget*> mBoxes;
    const QWidget& mExit;
    IsValid mIsValid;
};

}  // namespace fenrik
