#pragma once

#include "model/DownloadHost.h"
#include "model/NodeLink.h"

#include <QString>

#include <memory>

namespace fenrik {

class CNode;
class CSystem;
class NodeDiscovery;
class StatusLine;
class UiState;
class WaitCursor;
struct Services;

/// The toolbar's "Refresh": asks how much to download of the selected node, and downloads it. Shows the progress and
/// is the way in which the nodes reach the network.
class NodeRefresh : private DownloadHost {
public:
    /// Gives `system` its link to the network. All references outlive the object.
    NodeRefresh(const Services& services, CSystem& system, NodeDiscovery& discovery, UiState& ui, StatusLine& status);
    ~NodeRefresh() override;

    /// Downloads the selected node. With `TryFileFirst` a node image of the system in use is read instead of the node,
    /// if there is one.
    void RefreshCurrentNode(bool TryFileFirst);

    /// Breaks a running download off, after the exchange that is under way.
    void RequestCancel() { mDidCancel = true; }

private:
    enum class Answer { WithNames, WithoutNames, Cancel };

    void Refresh(CNode& node, bool tryFileFirst);
    [[nodiscard]] QString ImageFile(const CNode& node) const;
    [[nodiscard]] Answer AskForNames(const CNode& node);
    void Download(CNode& node, const QString& file, bool getNames);

    void MountNode(int number) override;
    void UnmountNode(int number) override;
    void pbProgressInit(int total) override;
    void pbProgressUpdate(int step) override;
    void pbProgressEnd() override;
    void ShowStatus(const QString& text) override;
    void ShowBusyCursor(bool busy) override;
    [[nodiscard]] bool DidCancel() const override;
    void setDidCancel(bool cancel) override { mDidCancel = cancel; }

    const Services& mServices;
    CSystem& mSystem;
    NodeDiscovery& mDiscovery;
    UiState& mUi;
    StatusLine& mStatus;
    NodeLink mLink;
    bool mDidCancel = false;
    QString mLastStatus;
    std::unique_ptr<WaitCursor> mHourglass;
};

}  // namespace fenrik
