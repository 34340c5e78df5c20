#pragma once

#include <QDialog>

#include <memory>

class QCheckBox;

namespace Ui {
class FrmOptions;
}

namespace fenrik {

class OptionsHost;
struct Settings;

/// "Tool Options": how traffic is shown. Each choice holds at once; all settings are written when the window closes,
/// in whatever way.
class FrmOptions : public QDialog {
    Q_OBJECT

public:
    enum class Size {
        Small,  ///< for the older network: one box
        Full,
    };

    /// `database` is the path of the present command database, `defaultDatabase` that of the default one. References
    /// outlive the dialog.
    FrmOptions(Settings& settings, Size size, const QString& database, const QString& defaultDatabase,
               OptionsHost& host, QWidget* parent = nullptr);

    /// If the program has ended with the window open, what was chosen is written too.
    ~FrmOptions() override;

    void done(int result) override;

private:
    void ShowSettings();
    void ShowDatabase(const QString& database, const QString& defaultDatabase);
    void SetUpBoxes();
    void ShrinkTo(Size size);
    void Unload();

    Settings& mSettings;
    OptionsHost& mHost;
    std::unique_ptr<Ui::FrmOptions> mUi;
    bool mUnloaded = false;
};

}  // namespace fenrik
