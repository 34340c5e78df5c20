#pragma once

#include "catalogue/SystemList.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmDBProperties;
}

namespace fenrik {

class Boxes;
class ErrorReporter;
struct Settings;

/// "Database Options": the user chooses the system to work with, and the market subset of the default database.
class frmDBProperties : public QDialog {
    Q_OBJECT

public:
    /// The system's name and path and the market in `settings` are preset, and are changed by OK alone. All references
    /// outlive the dialog.
    frmDBProperties(Settings& settings, const QString& programFolder, Boxes& boxes, ErrorReporter& errors,
                    QWidget* parent = nullptr);
    ~frmDBProperties() override;

private:
    void SetUpButtons();
    void ShowSystems();
    void ShowMarkets(const QString& programFolder);
    void ShowDetails(int position);
    void Browse();
    void AddChosen(const QString& path);
    void TakeOver();

    Settings& mSettings;
    Boxes& mBoxes;
    ErrorReporter& mErrors;
    SystemList mSystems;
    std::unique_ptr<Ui::frmDBProperties> mUi;
};

}  // namespace fenrik
