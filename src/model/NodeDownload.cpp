#include "model/NodeDownload.h"

#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "model/DownloadHost.h"
#include "model/MemoryRoad.h"
#include "model/NodeImage.h"
#include "model/NodeLink.h"
#include "model/NodeQueries.h"
#include "model/QueryRoad.h"
#include "model/SystemName.h"
#include "model/VariableFlashRoad.h"
#include "platform/Boxes.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

namespace fenrik {

namespace {

// Steps of the progress bar, whichever road is taken.
constexpr int kStepsOfAnInput = 5;
constexpr int kStepsOfAnOutput = 30;

/// Lends the node the image that GetData reads, for as long as the object lives.
class OpenNodeFile {
public:
    OpenNodeFile(CNode& node, const NodeImage& image) : mNode(node) { mNode.setNodeFile(&image); }
    ~OpenNodeFile() { mNode.setNodeFile(nullptr); }
    OpenNodeFile(const OpenNodeFile&) = delete;
    OpenNodeFile& operator=(const OpenNodeFile&) = delete;

private:
    CNode& mNode;
};

class BusyCursor {
public:
    explicit BusyCursor(DownloadProgress& progress) : mProgress(progress) { mProgress.ShowBusyCursor(true); }
    ~BusyCursor() { mProgress.ShowBusyCursor(false); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    DownloadProgress& mProgress;
};

}  // namespace

NodeDownload::NodeDownload(CNode& node, bool getNames) : mNode(node), mGetNames(getNames), mProgress(node.Link()) {}

int NodeDownload::Steps(const CNode& node, bool getNames)
{
    const int names = getNames ? (node.Inputs() + node.Outputs()) * NodeImage::kNameLength : 0;
    return NodeImage::kNameLength + node.Inputs() * kStepsOfAnInput + node.Outputs() * kStepsOfAnOutput + names;
}

void NodeDownload::Run(const QString& fileName, std::uint8_t& nodesInSystem)
{
    const auto run = [&] { RunGuarded(fileName, nodesInSystem); };
    if (const NodeLink* link = mNode.Link())
        Guarded(link->errors, "CNode:ReadNode", run);
    else
        run();
}

void NodeDownload::RunGuarded(const QString& fileName, std::uint8_t& nodesInSystem)
{
    mProgress.ClearCancel();
    if (fileName.isEmpty())
        ReadNetwork(nodesInSystem);
    else if (fileName.endsWith(QLatin1String(SystemName::kExtension), Qt::CaseInsensitive))
        mNode.LoadSystemDatabase(fileName);
    else
        ReadFile(fileName, nodesInSystem);
}

void NodeDownload::ReadFile(const QString& fileName, std::uint8_t& nodesInSystem)
{
    const auto image = NodeImage::Open(fileName);
    if (!image)
        return;
    const OpenNodeFile file(mNode, *image);
    const BusyCursor busy(mProgress);
    mProgress.Status(QStringLiteral("Retrieving Node information..."));
    if (const NodeLink* link = mNode.Link())
        link->pump.Once();
    Finish([&] { MemoryRoad(mNode, CNode::kFromFile, mGetNames, mProgress).Run(nodesInSystem); });
    mProgress.End();
}

bool NodeDownload::IsMounted() const
{
    return mNode.Parent() && mNode.Parent()->MountedNode() == &mNode;
}

void NodeDownload::ReadNetwork(std::uint8_t& nodesInSystem)
{
    const NodeLink* link = mNode.Link();
    if (!link)
        return;
    const bool wasMounted = IsMounted();
    const int number = mNode.number();  // the node may tell another one
    if (!wasMounted && link->host)
        link->host->MountNode(number);
    if (!IsMounted()) {
        mProgress.Status(QStringLiteral("Unable to Mount Selected Node."));
        return;
    }
    ReadMounted(nodesInSystem);
    if (!wasMounted && link->host)
        link->host->UnmountNode(number);
    mNode.isDirty();
    mProgress.End();
}

void NodeDownload::ReadMounted(std::uint8_t& nodesInSystem)
{
    if (mNode.VFlashSupport()) {
        Finish([this] { ReadVariableFlash(); });
        return;
    }
    const BusyCursor busy(mProgress);
    mProgress.Status(QStringLiteral("Retrieving Node information..."));
    mNode.Link()->pump.Once();
    Finish([&] { TakeRoad(nodesInSystem); });
}

void NodeDownload::ReadVariableFlash()
{
    constexpr std::int16_t kComfortModule = 6;

    const NodeLink& link = *mNode.Link();
    NodeQueries queries(mNode);
    mNode.setVFlashSupport(queries.ReadVariableFlash(0).has_value());
    if (!mNode.VFlashSupport() || mNode.typeID() != kComfortModule)
        return;
    const VariableFlash flash([&](int address) {
        const auto word = queries.ReadVariableFlash(address);
        mProgress.ThrowIfCancelled();
        if (queries.LinkClosed())
            throw DownloadEnded{DownloadEnded::Why::FlashBroken};
        return word.value_or(0);
    });
    VariableFlashRoad(mNode, flash, link.commands, mProgress).Run();
}

void NodeDownload::TakeRoad(std::uint8_t& nodesInSystem)
{
    NodeQueries queries(mNode);
    NodeInfoReply info;
    if (GoByQueries(queries, info)) {
        QueryRoad(mNode, queries, mGetNames, mProgress).Run(info);
        return;
    }
    const bool remote = mNode.Link()->handler.TargetPort() == Transport::kRemote;
    MemoryRoad(mNode, remote ? CNode::kFromRelay : CNode::kFromNode, mGetNames, mProgress).Run(nodesInSystem);
}

bool NodeDownload::GoByQueries(NodeQueries& queries, NodeInfoReply& info)
{
    if (mNode.iProtocol() == CNode::kProtocolImage)
        return false;
    CMsgHandler& handler = mNode.Link()->handler;
    handler.ClearCommErrorCount();
    queries.GetNodeInfo(info);
    if (handler.CommErrorCount() == 0 || mNode.iProtocol() != CNode::kProtocolUnknown)
        return true;
    mNode.setIProtocol(CNode::kProtocolImage);
    return false;
}

void NodeDownload::Finish(const std::function<void()>& road)
{
    try {
        road();
    } catch (const DownloadEnded& end) {
        if (!mProgress.Closing())
            TellWhy(end.why);
    }
}

void NodeDownload::TellWhy(DownloadEnded::Why why)
{
    switch (why) {
    case DownloadEnded::Why::Cancelled:
        mProgress.Status(QStringLiteral("Data download cancelled due to user request."));
        break;
    case DownloadEnded::Why::LinkFailed:
        ShowFailure(QStringLiteral("Diagnostics is having trouble communicating with the node.  Please check that your "
                                   "connection with the Transceiver is still good, and that the node is on and "
                                   "running normally."),
                    QStringLiteral("Update Node Information"), false);
        mProgress.Status(QStringLiteral("Data download cancelled due to communication error."));
        break;
    case DownloadEnded::Why::FlashBroken:
        // A question whose answer nobody looks at.
        ShowFailure(
            QStringLiteral("An unexpected error has occurred while trying to download the \n node programming."), {},
            true);
        break;
    }
}

void NodeDownload::ShowFailure(const QString& text, const QString& title, bool question)
{
    if (const NodeLink* link = mNode.Link()) {
        link->boxes.MsgBox(text, QMessageBox::Critical,
                           question ? QMessageBox::Yes | QMessageBox::No : Boxes::Buttons(QMessageBox::Ok), title);
    }
}

}  // namespace fenrik
