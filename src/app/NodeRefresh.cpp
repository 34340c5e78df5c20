#include "app/NodeRefresh.h"

#include "app/NodeDiscovery.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "platform/Boxes.h"
#include "platform/CFileSystem.h"
#include "shared/EventPump.h"
#include "widgets/StatusLine.h"
#include "widgets/WaitCursor.h"

namespace fenrik {

NodeRefresh::NodeRefresh(const Services& services, CSystem& system, NodeDiscovery& discovery, UiState& ui,
                         StatusLine& status)
    : mServices(services), mSystem(system), mDiscovery(discovery), mUi(ui),
      mStatus(status), mLink{services.handler, services.pump, services.commands, services.boxes, services.errors, this}
{
    mSystem.setLink(&mLink);
}

NodeRefresh::~NodeRefresh()
{
    mSystem.setLink(nullptr);
}

void NodeRefresh::RefreshCurrentNode(bool TryFileFirst)
{
    mUi.SetUIState(UiState::kBusy);
    if (CNode* node = mSystem.SelectedNode())
        Refresh(*node, TryFileFirst);
    mUi.SetUIState(UiState::kReady);
}

void NodeRefresh::Refresh(CNode& node, bool tryFileFirst)
{
    const QString file = tryFileFirst ? ImageFile(node) : QString();
    if (node.typeID() == CNode::kUnknownType)
        mDiscovery.VerifyNode(&node, false);
    if (!node.Refreshable()) {
        const QString text = QStringLiteral("This Node Type cannot be downloaded.");
        mStatus.setMsg(text);
        mServices.boxes.MsgBox(text, QMessageBox::Information);
        return;
    }
    const Answer answer = file.isEmpty() ? AskForNames(node) : Answer::WithNames;
    if (answer == Answer::Cancel)
        mStatus.setMsg(QStringLiteral("Data download cancelled."));
    else
        Download(node, file, answer == Answer::WithNames);
}

QString NodeRefresh::ImageFile(const CNode& node) const
{
    if (!mSystem.Defined())
        return {};
    const QString file = QStringLiteral("%1%2_Node %3.bin").arg(mSystem.path(), mSystem.Name()).arg(node.number());
    return CFileSystem::FileExists(file) ? file : QString();
}

NodeRefresh::Answer NodeRefresh::AskForNames(const CNode& node)
{
    const QString name = node.Name().isEmpty() ? node.key() : node.Name();
    const auto button = mServices.boxes.MsgBox(
        QStringLiteral("Information for the selected node (%1) will now be downloaded.\n"
                       "Would you like to download Input/Output Names in addition to usage information ?\n"
                       "(this will lengthen the required transfer time)")
            .arg(name),
        QMessageBox::Question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
        QStringLiteral("Retrieve Node Information"));
    if (button == QMessageBox::Yes)
        return Answer::WithNames;
    return button == QMessageBox::No ? Answer::WithoutNames : Answer::Cancel;
}

void NodeRefresh::Download(CNode& node, const QString& file, bool getNames)
{
    const WaitCursor hourglass;
    if (file.isEmpty())
        mDiscovery.VerifyNode(&node, true);
    auto nodesInSystem = std::uint8_t(mSystem.NodesInSystem());
    node.ReadNode(file, nodesInSystem, getNames);
    mStatus.EndProgress();  // also after an error that left the bar standing
}

void NodeRefresh::MountNode(int number)
{
    mDiscovery.MountNode(number);
}

void NodeRefresh::UnmountNode(int number)
{
    // How the download ended is what the user waits for; that its own mount went with it is no news.
    if (mDiscovery.UnmountNode(number))
        mStatus.setMsg(mLastStatus);
}

void NodeRefresh::pbProgressInit(int total)
{
    mStatus.StartProgress(total);
}

void NodeRefresh::pbProgressUpdate(int step)
{
    mStatus.StepProgress(step);
}

void NodeRefresh::pbProgressEnd()
{
    mStatus.EndProgress();
}

void NodeRefresh::ShowStatus(const QString& text)
{
    mLastStatus = text;
    mStatus.setMsg(text);
}

void NodeRefresh::ShowBusyCursor(bool busy)
{
    mHourglass = busy ? std::make_unique<WaitCursor>() : nullptr;
}

bool NodeRefresh::DidCancel() const
{
    // A window that closes breaks the download off as the user would.
    return mDidCancel || mServices.pump.Stopped();
}

}  // namespace fenrik
