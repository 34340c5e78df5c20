#pragma once

#include "remote/CPipeProfile.h"

#include <QObject>

class QCheckBox;
class QComboBox;
class QPushButton;

namespace fenrik {

class Boxes;
class PipeSettings;
class RDMain;

/// Whether remote diagnostics is wanted, and under which profile. The profiles can be edited from here.
class ProfileBoxes : public QObject {
    Q_OBJECT

public:
    struct Controls {
        QCheckBox& enable;
        QComboBox& profiles;
        QPushButton& edit;
    };

    /// All outlive the object.
    ProfileBoxes(const Controls& controls, RDMain& remote, const PipeSettings& storage, Boxes& boxes, QWidget* window);

    /// Shows the profiles and the present choice.
    void Show();

    /// Remote diagnostics is wanted and no profile is chosen.
    [[nodiscard]] bool LacksProfile() const;

    /// The choice becomes that of the program. While the profiles' storage is out of order, it is none.
    void Apply();

private:
    void EnableControls();
    void FillList(int row);
    void ChooseRow(int row);
    void AddNew();
    void Edit();
    /// The profile of the chosen row, or nothing.
    [[nodiscard]] const CPipeProfile* Selected() const;
    [[nodiscard]] int Count() const;

    Controls mControls;
    RDMain& mRemote;
    const PipeSettings& mStorage;
    Boxes& mBoxes;
    QWidget* mWindow;
};

}  // namespace fenrik
