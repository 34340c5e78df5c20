#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmError;
}

namespace fenrik {

class VersionInfo;

/// Tells the user of an unexpected error. Two sizes: with and without the details.
class frmError : public QDialog {
    Q_OBJECT

public:
    frmError(const VersionInfo& version, const QString& details, QWidget* parent = nullptr);
    ~frmError() override;

private:
    void FlipDetails();

    std::unique_ptr<Ui::frmError> mUi;
};

}  // namespace fenrik
