#pragma once

#include <QDialog>

#include <cstdint>
#include <memory>

class QLineEdit;

namespace Ui {
class FrmMsgLogging;
}

namespace fenrik {

class ErrorReporter;
class SettingsStore;
struct Settings;

/// The options of the message log. They hold at once; closing the dialog, in whatever way, writes them to the store.
/// The event trigger belongs to the older network and shows only in a run of its window; a protocol that was chosen
/// meanwhile is the next start's.
class FrmMsgLogging : public QDialog {
    Q_OBJECT

public:
    /// Whose window opens it.
    enum class Network { Present, Older };

    /// References outlive the dialog. A store that can't be written is told to `errors`.
    FrmMsgLogging(Network network, Settings& settings, SettingsStore& store, ErrorReporter& errors,
                  QWidget* parent = nullptr);
    ~FrmMsgLogging() override;

    void done(int result) override;

private:
    void ShowSettings();
    void SetUpButtons();
    void SetUpNumber(QLineEdit& box, std::int32_t& number);
    void EnableControls();

    Settings& mSettings;
    SettingsStore& mStore;
    ErrorReporter& mErrors;
    std::unique_ptr<Ui::FrmMsgLogging> mUi;
};

}  // namespace fenrik
