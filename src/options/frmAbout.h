#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

namespace fenrik {

class Boxes;
class ErrorReporter;
class Shell;
class VersionInfo;

/// Tells the program's version, and on request the databases in use. A click anywhere but on a link closes it, and any
/// key does.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    /// What it works with. All outlive the dialog.
    struct Parts {
        const VersionInfo& version;
        QString programFolder;  ///< of the databases
        Shell& shell;
        Boxes& boxes;
        ErrorReporter& errors;
    };

    explicit frmAbout(const Parts& parts, QWidget* parent = nullptr);
    ~frmAbout() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void ShowVersion();
    void ShowLogos();
    void SetUpLinks();
    void OpenPage(const char* address);
    void ShowDatabases();

    const Parts mParts;
    std::unique_ptr<Ui::frmAbout> mUi;
};

}  // namespace fenrik
