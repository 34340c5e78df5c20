#pragma once

#include <QFrame>

class QLabel;

namespace fenrik {

class VersionInfo;

/// What is on screen while the program starts.
class frmSplash : public QFrame {
    Q_OBJECT

public:
    explicit frmSplash(const VersionInfo& version);

    /// The line that says what is being loaded.
    void setInfo(const QString& text);

private:
    QLabel* mLoadStatus;
};

}  // namespace fenrik
