#pragma once

#include <QObject>
#include <QTimer>

namespace fenrik {

class MAF98;

/// The counts of missed tokens and bus collisions since the connection was made, and their marks on the panel, which
/// go out 2 seconds after the last of them.
class Marks98 : public QObject {
    Q_OBJECT

public:
    /// `panels` outlives it. The timers are its children "TTokenMissed" and "TCol".
    explicit Marks98(MAF98& panels, QObject* parent = nullptr);

    /// A connection begins: counts 0 and dark marks.
    void Reset();

    void CountMissedToken();

    /// Gives the new count.
    int CountCollision();

private:
    void SetUp(QTimer& timer, const char* name);

    MAF98& mPanels;
    QTimer mTokenMissed;
    QTimer mCol;
    int mMissedTokens = 0;
    int mCollisions = 0;
};

}  // namespace fenrik
