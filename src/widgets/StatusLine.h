#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

namespace fenrik {

/// The line at the window's foot: `txtStatus`, the state of the connection; `txtMsg`, what was done last; and during
/// long work the bar `pbProgress`.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void setStatus(const QString& text);
    void setMsg(const QString& text);
    [[nodiscard]] QString Status() const { return mStatus->text(); }
    [[nodiscard]] QString Msg() const { return mMsg->text(); }

    /// Shows the bar with `total` steps to come; takes `step` of them; hides it. More steps than announced stay full.
    void StartProgress(int total);
    void StepProgress(int step);
    void EndProgress();

private:
    QLabel* mStatus;
    QLabel* mMsg;
    QProgressBar* mProgress;
};

}  // namespace fenrik
