#pragma once

#include <QLabel>
#include <QStatusBar>

namespace fenrik {

/// The line at the window's foot: `txtStatus`, the state of the connection, and `txtMsg`, what was done last.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void setStatus(const QString& text);
    void setMsg(const QString& text);
    [[nodiscard]] QString Status() const { return mStatus->text(); }
    [[nodiscard]] QString Msg() const { return mMsg->text(); }

private:
    QLabel* mStatus;
    QLabel* mMsg;
};

}  // namespace fenrik
