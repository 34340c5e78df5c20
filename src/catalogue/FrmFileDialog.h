#pragma once

#include "catalogue/LegacyDatabase.h"
#include "catalogue/Volumes.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class FrmFileDialog;
}

namespace fenrik {

class Boxes;
struct Settings;

/// The user chooses the system database of the older network. There is no cancelling: whatever way the dialog is
/// closed, the file that is selected then is the database in use.
class FrmFileDialog : public QDialog {
    Q_OBJECT

public:
    /// Why the file of that path can't be the database, in words for the user; empty if it can.
    using Check = std::function<QString(const QString& path)>;

    /// The database in `settings` is preset; `firstFolder` is shown if there is none. References outlive the dialog.
    FrmFileDialog(Settings& settings, const QString& firstFolder, Boxes& boxes, Check check,
                  std::vector<Volume> volumes = VolumesOfThisComputer(), QWidget* parent = nullptr);
    ~FrmFileDialog() override;

    /// Closes the dialog: accepted with a database. Without one the user is asked, and it may stay open.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpLists();
    void ShowPresent(const QString& firstFolder);
    void ShowFolder(const QString& folder);
    void EnterFolder(const QString& name);
    void ChooseFile(const QString& name);
    [[nodiscard]] bool TellComplaint();
    void ShowPath();
    void ShowInfo();
    [[nodiscard]] bool WantsNone();
    void TakeOver();

    Settings& mSettings;
    Boxes& mBoxes;
    std::vector<Volume> mVolumes;
    QString mFolder;
    Check mCheck;
    QString mFile;                    // name; empty while none is selected
    QString mComplaint;               // about it
    std::optional<LegacyInfo> mInfo;  // of the file that is selected; nothing if it is no database
    std::unique_ptr<Ui::FrmFileDialog> mUi;
};

}  // namespace fenrik
