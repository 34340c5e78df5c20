#pragma once

#include "diagnostics/LoadShedTable.h"
#include "shared/Clock.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string_view>

namespace fenrik {

class CharacterFace;
class PicMiscDisplay;

/// Where the panel gets the node collision count from.
class NodeCountSource {
public:
    virtual ~NodeCountSource() = default;

    /// Asks the mounted node for its count of collisions; waits for the answer. Nothing if none came.
    [[nodiscard]] virtual std::optional<int> AskNodeCount() = 0;
};

/// What stands on the small panel, from the top: sync lamp, collision mark, the counters of port, byte and node
/// collisions, and the load-shed level of each node. All but the levels stands on both pictures.
///
/// Noise on the line calls ShowPC, ShowBC and ShowCollisionMark thousands of times a second: they only set characters,
/// and the pictures are painted at their own pace.
class MiscFace : public QObject {
    Q_OBJECT

public:
    /// `display`, `clock` and `nodeCount` outlive it. The timers are children: "TSync", "TAniCollision".
    MiscFace(PicMiscDisplay& display, const Clock& clock, NodeCountSource& nodeCount, QObject* parent = nullptr);

    /// The lamp alone, and the lamp for 300 ms from now.
    void ShowSync(bool lit);
    void LightSync();

    void ShowPC(int count);
    void ShowBC(int count);

    /// With `on` asks for the node's count, which stands if no answer comes, and draws it bright, else dim. A changed
    /// count raises the mark.
    void ShowNC(bool on);
    void DrawNC(int count, bool on);

    /// Active: "<- `kind` ->", until 2 seconds have passed without another. Else the dim, empty mark.
    void ShowCollisionMark(bool active, const char* kind);

    /// Starts both timers, so that lamp and mark go out in their time.
    void RunOutLamps();

    /// Turns the spinner one step, or wipes it.
    void StepSpinner(bool idle);

    void ClearPanel();

    /// The rows of nodes 1 to `nodesInSystem`, 32 at most.
    void ShowLoadShed(const LoadShedTable& table, int nodesInSystem);

private:
    void MiscGlyph(int column, int row, char code, bool dim);
    void PutLine(std::string_view text, int column, int row, bool dim);
    void PutCounter(const char* label, int row, int count);
    void Refresh();
    void EndMark();

    CharacterFace& mFace;
    CharacterFace& mFace17_32;
    const Clock& mClock;
    NodeCountSource& mNodeCountSource;
    QTimer mSync;          // TSync
    QTimer mAniCollision;  // TAniCollision
    Moment mLastCollision;
    int mNodeCount = 0;
    int mSpinner = 0;
};

}  // namespace fenrik
