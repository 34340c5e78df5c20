#include "model/CSystem.h"

#include "catalogue/SystemList.h"
#include "model/NodeLink.h"
#include "model/SavePrompt.h"
#include "model/SystemDatabase.h"
#include "model/SystemFiles.h"
#include "model/SystemName.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include <QDir>

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kNodeButtons = 32;
constexpr int kButtonsOfFirstBar = 16;

QString WithSeparator(const QString& folder)
{
    return folder.endsWith(QDir::separator()) ? folder : folder + QDir::separator();
}

}  // namespace

CSystem::CSystem(Settings& settings, const QString& programFolder, SystemOwner* owner)
    : mSettings(settings), mProgramFolder(programFolder), mOwner(owner)
{
    Clear();
}

void CSystem::Clear()
{
    while (mNodes.Count() > 0)
        mNodes.RemoveLast();
    mDirty = false;
    mDefined = false;
    mName = QStringLiteral("Unspecified System");
    mPath = WithSeparator(mProgramFolder);
    mDatabase = mPath + QStringLiteral("ncCommand.dav");
}

void CSystem::setNodesInSystem(std::int16_t count)
{
    while (mNodes.Count() > count && mNodes.Count() > 0)
        mNodes.RemoveLast();
    AddNodesUpTo(count);
}

void CSystem::AddNodesUpTo(int count)
{
    for (int number = mNodes.Count() + 1; number <= count; ++number) {
        auto node = std::make_unique<CNode>();
        node->Init(*this, std::uint8_t(number));
        const QString key = node->key();
        mNodes.Add(std::move(node), key);
    }
}

std::int16_t CSystem::ActiveNodeCount() const
{
    std::int16_t active = 0;
    for (int number = 1; number <= mNodes.Count(); ++number)
        active += mNodes[number].Active() ? 1 : 0;
    return active;
}

std::int16_t CSystem::NumberOf(const CNode* node)
{
    return node ? node->number() : std::int16_t(0);
}

void CSystem::setSelectedNodeNumber(std::int16_t number)
{
    // A number outside the list stays as it came: it selects nothing, and shows who asked for it.
    if (const CNode* node = mNodes.Find(number); node && !node->Active())
        number = 0;

    const std::int16_t old = mSelectedNodeNumber;
    mSelectedNodeNumber = number;
    if (old == number)
        return;
    SetButtonPressed(old, false);
    SetButtonPressed(number, true);
    if (mOwner)
        mOwner->HandleSelectedNodeChange();
}

void CSystem::setMountedNodeNumber(std::int16_t number)
{
    const std::int16_t old = mMountedNodeNumber;
    mMountedNodeNumber = number;
    if (old == number)
        return;
    RefreshButtonIcon(old);
    RefreshButtonIcon(number);
    if (mOwner)
        mOwner->HandleMountedNodeChange();
}

std::optional<NodeBar> CSystem::TargetNodebar(int number) const
{
    if (!mOwner)
        return std::nullopt;
    return number > kButtonsOfFirstBar ? NodeBar::Nodebar17_32 : NodeBar::Nodebar;
}

std::optional<NodeButton> CSystem::TargetNodeButton(int number) const
{
    const auto bar = TargetNodebar(number);
    if (!bar || number < 1 || number > kNodeButtons)
        return std::nullopt;
    return NodeButton{*bar, number};
}

void CSystem::ActivateNode(int number)
{
    CNode* node = mNodes.Find(number);
    if (!node)
        return;
    node->setActive(true);
    if (const auto button = TargetNodeButton(number))
        mOwner->SetNodeButtonEnabled(*button, true);
}

void CSystem::DeActivateNode(int number)
{
    CNode* node = mNodes.Find(number);
    if (!node)
        return;
    node->setActive(false);
    node->setIProtocol(CNode::kProtocolUnknown);
    node->setHeaderInfoAvailable(false);
    if (number == mSelectedNodeNumber)
        setSelectedNodeNumber(0);
    if (const auto button = TargetNodeButton(number)) {
        mOwner->SetNodeButtonPressed(*button, false);
        mOwner->SetNodeButtonEnabled(*button, false);
    }
}

void CSystem::SelectNode(std::uint8_t nodeNumber)
{
    if (nodeNumber > 0 && nodeNumber != mSelectedNodeNumber)
        DeselectNode();
    setSelectedNodeNumber(nodeNumber);
}

void CSystem::DeselectNode()
{
    setSelectedNodeNumber(0);
}

void CSystem::LoadSystem(const QString& SystemName, const QString& PathOnly, bool Quickie)
{
    Clear();
    if (SystemName.isEmpty() || PathOnly.isEmpty()) {
        AddNodesUpTo(mSettings.NodesInSystem);
        ShowNodes();
        return;
    }

    const QString folder = WithSeparator(PathOnly);
    SystemFiles files(folder, SystemName, Quickie);
    const int count = files.NodeCount() > 0 ? files.NodeCount() : mSettings.NodesInSystem;
    PlaceNodes(files.Nodes(), count);
    mName = SystemName;
    mPath = folder;
    if (const QString database = FindSystemDatabase(folder, SystemName); !database.isEmpty()) {
        mDatabase = database;
        auto nodesInSystem = std::uint8_t(std::min(count, 255));
        LoadSystemDatabase(database, nodesInSystem, Quickie);
    }
    mDefined = true;
    ShowNodes();
}

void CSystem::LoadSystemDatabase(const QString& FileName, std::uint8_t& pNodesInSystem, bool Quickie)
{
    SystemDatabase(*this, UserBoxes()).Load(FileName, pNodesInSystem, Quickie);
}

bool CSystem::SaveSystem(std::int32_t& Response)
{
    if (!mLink)
        return false;
    bool saved = false;
    Guarded(mLink->errors, "CSystem:SaveSystem", [this, &Response, &saved] {
        const QString name = SavePrompt(mLink->boxes, mProgramFolder).Ask(*this, Response);
        saved = !name.isEmpty() && MakeSystemDatabase(name);
        if (saved)
            TakeSavedName(name);
    });
    return saved;
}

bool CSystem::MakeSystemDatabase(const QString& Name)
{
    const QString folder = WithSeparator(mProgramFolder);
    const QString present = FindSystemDatabase(folder, Name);
    const QString path = present.isEmpty() ? folder + Name + QLatin1String(SystemName::kExtension) : present;
    return SystemDatabase(*this, UserBoxes()).Make(path, folder + QStringLiteral("ncCommand.dav"));
}

void CSystem::TakeSavedName(const QString& name)
{
    mSettings.SystemName = name;
    mSettings.SystemPath = WithSeparator(mProgramFolder);
    if (mOwner)
        mOwner->SystemSaved(name);
}

Boxes* CSystem::UserBoxes() const
{
    return mLink ? &mLink->boxes : nullptr;
}

void CSystem::PlaceNodes(Collection<CNode>& found, int count)
{
    for (int position = 1; position <= count; ++position) {
        auto node = found.Contains(position) ? found.Take(position) : std::make_unique<CNode>();
        node->Init(*this, node->number() > 0 ? node->number() : std::uint8_t(position));
        const QString key = node->key();
        // An image that stands at the wrong position may have taken the key already; this node is then left out.
        mNodes.Add(std::move(node), key);
    }
}

void CSystem::ShowNodes()
{
    if (!mOwner)
        return;
    mOwner->RefreshUINodeBarNodes();
    mOwner->AdjustFormCaption();
}

void CSystem::SetButtonPressed(int number, bool pressed)
{
    if (const auto button = TargetNodeButton(number))
        mOwner->SetNodeButtonPressed(*button, pressed);
}

void CSystem::RefreshButtonIcon(int number)
{
    const CNode* node = mNodes.Find(number);
    if (const auto button = TargetNodeButton(number); button && node)
        mOwner->SetNodeButtonIcon(*button, node->NodeBarIconName());
}

}  // namespace fenrik
