#pragma once

#include "diagnostics/Analog.h"
#include "diagnostics/CollisionMonitor.h"
#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "diagnostics/Loadshed.h"
#include "diagnostics/MiscFace.h"
#include "diagnostics/NodeViewHost.h"
#include "diagnostics/PointViewHost.h"

#include <QObject>

#include <memory>

class QMenu;
class QStackedWidget;

namespace fenrik {

struct AsciiMap;
class DiagHub;
class Flash;
class FrameInputs;
class FrameOutputs;
class InputDiagnostics;
class OpenGraphics;
class OutputDiagnostics;
class PageArea;
class PicAnalogDisplay;
class PicMiscDisplay;
class States;
struct Services;

/// The instruments of the main window: the pages of the views, and the small panel that is always on screen with its
/// lamp, counters and load-shed rows. Owns what draws on them.
class DiagPanels : public QObject,
                   private NodeCountSource,
                   private CollisionHost,
                   private NodeViewHost,
                   private OutputViewHost {
    Q_OBJECT

public:
    /// Puts the views' pages into `pages`.
    DiagPanels(const Services& services, const AsciiMap& asciiMap, QStackedWidget& pages, QObject* parent = nullptr);
    ~DiagPanels() override;

    /// Before anything is shown: makes the views known to the hub. `menu` opens over the panel.
    void Attach(DiagHub& hub, QMenu& menu);

    /// The panel; its owner lays it out.
    [[nodiscard]] QWidget* Panel() const;

    [[nodiscard]] MiscFace& Face() { return *mMiscFace; }

    /// From Attach on.
    [[nodiscard]] States& StatesView() { return *mStates; }

    /// The toolbar's "Collision", and the end of a mount.
    void SetCollisionMonitor(bool on);

    /// The connection has ended: the monitor asks no more.
    void StopMonitor() { mMonitor->Stop(); }

    /// Reads how analog values are written. Throws Error.
    void GetAnalogCommands(const QString& path) { mAnalog->GetAnalogCommands(path); }
    void UpdateAnalog(int command);

    /// A connection starts: what was heard before is forgotten.
    void ResetPanels();

    void UpdateLoadShed(int data);
    void ResetLoadShed();
    void ShowLoadShed();

    void ClearPanel();

    /// Clears the panel; lamp and mark run out.
    void Clear();

    void TypeBannerOnce();

private:
    void AddPages(QStackedWidget& pages);
    void AttachPointViews();
    void ShowAnalog();

    // NodeCountSource
    [[nodiscard]] std::optional<int> AskNodeCount() override;

    // NodeViewHost
    [[nodiscard]] int DisplayState() const override;
    bool VerifyNode(CNode* node, bool force) override;

    // OutputViewHost
    void VerifyNode(CNode& node) override;
    [[nodiscard]] bool PortOpenForTx() const override;
    [[nodiscard]] QString FaultText(int node, int output) const override;
    void Compose(int command, bool on) override;

    // CollisionHost; the first also NodeViewHost
    void SetUIState(int state) override;
    [[nodiscard]] bool UIReady() const override;
    void setTxtMsg(const QString& text) override;
    [[nodiscard]] int MountedNodeNumber() const override;
    void setCollisionPressed(bool pressed) override;

    const Services& mServices;
    DiagHub* mHub = nullptr;
    GlyphSheets mSheets;
    PicAnalogDisplay* mAnalogDisplay = nullptr;  // owned by the pages
    FrameOutputs* mFrameOutputs = nullptr;
    FrameInputs* mFrameInputs = nullptr;
    PageArea* mOutputsPage = nullptr;
    PageArea* mInputsPage = nullptr;
    std::unique_ptr<Graphics> mGraphics;
    std::unique_ptr<Analog> mAnalog;
    std::unique_ptr<States> mStates;
    std::unique_ptr<Flash> mFlash;
    std::unique_ptr<OutputDiagnostics> mOutputs;
    std::unique_ptr<InputDiagnostics> mInputs;
    PicMiscDisplay* mMiscDisplay = nullptr;  // owned by the window's layout
    std::unique_ptr<MiscFace> mMiscFace;
    std::unique_ptr<Loadshed> mLoadshed;
    std::unique_ptr<CollisionMonitor> mMonitor;
    std::unique_ptr<OpenGraphics> mBanner;
};

}  // namespace fenrik
