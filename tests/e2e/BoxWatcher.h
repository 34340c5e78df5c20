#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace fenrik {

/// Closes every dialog that opens and keeps its text: a box that nobody expects shows as a
/// failed expectation and not as a test that hangs.
class BoxWatcher : public QObject {
public:
    BoxWatcher();

    /// The texts since the last call.
    [[nodiscard]] QStringList Take();

private:
    void Look();

    QTimer mTimer;
    QStringList mTexts;
};

}  // namespace fenrik
