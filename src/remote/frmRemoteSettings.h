#pragma once

#include "remote/CPipeProfile.h"

#include <QDialog>

#include <array>
#include <memory>
#include <optional>

class QLabel;
class QLineEdit;
class QListWidgetItem;

namespace Ui {
class frmRemoteSettings;
}

namespace fenrik {

class Boxes;
class PipeSettings;

/// "Remote Diagnostics Settings": edits a copy of the profiles. Whoever opens it takes the copy after "Save changes"
/// and stores it; after "Cancel" nothing has happened.
class frmRemoteSettings : public QDialog {
    Q_OBJECT

public:
    /// Selects the row `selected`, counted from 1, if there is one. `storage` gives new profiles their identity.
    frmRemoteSettings(const CPipeProfiles& profiles, int selected, const PipeSettings& storage, Boxes& boxes,
                      QWidget* parent = nullptr);
    ~frmRemoteSettings() override;

    /// True: a profile is added as soon as the window is shown.
    bool IsNewProfileDialog = false;

    /// The window was left by "Save changes".
    [[nodiscard]] bool DidSaveChanges() const { return mDidSaveChanges; }

    [[nodiscard]] const CPipeProfiles& GetLocalProfileCollection() const { return mProfiles; }

    /// The profile of the selected row, if one is selected.
    [[nodiscard]] std::optional<CPipeProfile> GetSelectedProfile() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    static constexpr int kFields = 4;

    void SetUpBoxes();
    void SetUpActions();
    void RefreshList(int row);
    void SelectRow(int row);
    void ShowProfile();
    void TakeField(int field, const QString& text);
    void RenameFromRow(QListWidgetItem* item);
    /// Ends the renaming of a row, with its new name. False if a box with an invalid value keeps the focus.
    bool TakeFocusTo(QWidget& control);
    void AddNewProfile();
    void DeleteSelectedProfile();
    void SaveChanges();
    void ShowFault(int row, int faults);

    [[nodiscard]] int SelectedRow() const;
    [[nodiscard]] CPipeProfile* Selected();
    [[nodiscard]] bool IsFieldValid(const QWidget* box) const;
    void SetRowText(int row, const QString& text);

    CPipeProfiles mProfiles;
    const PipeSettings& mStorage;
    Boxes& mBoxes;
    bool mDidSaveChanges = false;
    std::unique_ptr<Ui::frmRemoteSettings> mUi;
    std::array<QLineEdit*, kFields> mFields;
    std::array<QLabel*, kFields> mCaptions;
};

}  // namespace fenrik
