#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmRDTimedMessage;
}

class QTimer;

namespace fenrik {

/// "Information - Remote Diagnostics": a message that goes away by itself, or at a click on it.
class frmRDTimedMessage : public QDialog {
    Q_OBJECT

public:
    explicit frmRDTimedMessage(QWidget* parent = nullptr);
    ~frmRDTimedMessage() override;

    static constexpr int kUsualTimeout = 3000;  ///< milliseconds

    /// Shows `msg` for `timeout` milliseconds and returns at once. The window stays the caller's.
    void doNonModalDialog(const QString& msg, int timeout = kUsualTimeout);

    /// The same, and returns when the message is gone. Runs the event loop meanwhile.
    void doModalDialog(const QString& msg, int timeout = kUsualTimeout);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Begin(const QString& msg, int timeout);

    std::unique_ptr<Ui::frmRDTimedMessage> mUi;
    QTimer* tmAutoClose;
};

}  // namespace fenrik
