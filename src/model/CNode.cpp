#include "model/CNode.h"

#include "model/CSystem.h"
#include "model/NodeDownload.h"
#include "model/NodeImage.h"
#include "model/NodeLink.h"
#include "model/NodeQueries.h"
#include "model/NodeReplies.h"
#include "model/NodeTable.h"
#include "model/NodeVersions.h"
#include "platform/SubscriptOutOfRange.h"

namespace fenrik {

namespace {

// Tenths of a volt, from level 1 to level 8.
constexpr std::array<int, CNode::kLoadShedLevels> kLoadShedTenths{125, 121, 117, 113, 109, 105, 101, 97};

/// Who is told of what goes wrong with the node's table; null if nobody is.
Boxes* BoxesOf(const CNode& node)
{
    const NodeLink* link = node.Link();
    return link ? &link->boxes : nullptr;
}

}  // namespace

CNode::CNode() : mType(&NodeTypes::Row(kUnknownType)) {}

CNode::~CNode() = default;

void CNode::Init(CSystem& parent, std::uint8_t number)
{
    mParent = &parent;
    mNumber = number;
}

void CNode::setTypeID(std::int16_t typeID)
{
    if (typeID == mTypeID)
        return;
    mType = &NodeTypes::Row(typeID);
    mTypeID = mType->typeID;
    mVFlashSupport = mType->VFlashSupport;
    if (mType->bits_per_input != NodeType::kAsBefore)
        mBitsPerInput = mType->bits_per_input;
    ClearCollections();
    MakePoints();
}

void CNode::ClearCollections()
{
    mInputs = {};
    mOutputs = {};
}

void CNode::MakePoints()
{
    for (std::int16_t number = 1; number <= Inputs(); ++number) {
        auto input = std::make_unique<CDigitalInput>();
        input->Init(*this, number);
        const QString key = input->Name();
        mInputs.Add(std::move(input), key);
    }
    for (std::int16_t number = 1; number <= Outputs(); ++number) {
        auto output = std::make_unique<COutput>();
        output->Init(*this, number);
        output->setPWMKind(NodeTypes::PwmKind(mTypeID, number));
        const QString key = output->Name();
        mOutputs.Add(std::move(output), key);
    }
}

void CNode::setName(const QString& name)
{
    mName = name;
    isDirty();
}

void CNode::SetVersion(std::uint8_t& stored, std::uint8_t version)
{
    if (stored == version)
        return;
    stored = version;
    isDirty();
}

QString CNode::NodeBarIconName() const
{
    if (!mParent)
        return QStringLiteral("Blank");
    if (mParent->MountedNode() == this)
        return QStringLiteral("Node%1M").arg(mNumber);
    if (mNumber <= mParent->NodesInSystem())
        return QStringLiteral("Node%1").arg(mNumber);
    return QStringLiteral("Blank");
}

void CNode::isDirty()
{
    if (mParent)
        mParent->setDirty();
}

bool CNode::NewDPWMCCompatible()
{
    if (mTypeID == 0 || mTypeID == 9)
        return false;
    if (mTypeID != 2)
        return true;
    if (mParent)
        NodeVersions(*mParent).GetEmbeddedVersion(false);
    // 0.0 means that the version could not be had. Such a node gets the newer command, on purpose.
    const bool unknown = mOsMajVersion == 0 && mOsMinVersion == 0;
    const bool old = mOsMajVersion == 0 || (mOsMajVersion == 1 && mOsMinVersion <= 2);
    return unknown || !old;
}

Fixed4 CNode::LoadShedVoltage(int level)
{
    if (level < 1 || level > kLoadShedLevels)
        throw SubscriptOutOfRange();
    return Fixed4::Quotient(kLoadShedTenths[std::size_t(level - 1)], 10);
}

void CNode::TakeNodeInfo(const NodeInfoReply& info)
{
    mNameRef = info.nameRef.value_or(std::uint16_t(mNameRef));
    mCommentRef = info.commentRef.value_or(std::uint16_t(mCommentRef));
    mTypeID = info.type.value_or(mTypeID);
    mNumber = info.number.value_or(mNumber);
    for (std::size_t i = 0; i < mExtraInfo.size(); ++i)
        mExtraInfo[i] = info.extra[i].value_or(mExtraInfo[i]);
}

void CNode::TakeSavedVersion(std::uint8_t major, std::uint8_t minor)
{
    mOsMajVersion = major;
    mOsMinVersion = minor;
}

void CNode::LoadSystemDatabase(const QString& Path)
{
    NodeTable(*this, BoxesOf(*this)).Load(Path);
}

void CNode::LoadSystemDatabase(Database& database)
{
    NodeTable(*this, BoxesOf(*this)).Load(database);
}

SaveResult CNode::MakeSystemDatabase(Database& database)
{
    return NodeTable(*this, BoxesOf(*this)).Make(database);
}

SaveResult CNode::MakeSystemDatabase(const QString& Path)
{
    return NodeTable(*this, BoxesOf(*this)).Make(Path);
}

void CNode::ReadNode(const QString& FileName, std::uint8_t& NodesInSystem, bool GetNames)
{
    NodeDownload(*this, GetNames).Run(FileName, NodesInSystem);
}

const NodeLink* CNode::Link() const
{
    return mParent ? mParent->Link() : nullptr;
}

bool CNode::GetData(int mode, int position, std::uint8_t& value)
{
    value = 0;
    std::optional<std::uint8_t> byte;
    if (mode == kFromFile && mNodeFile)
        byte = mNodeFile->ByteAt(position);
    else if (mode == kFromRelay || mode == kFromNode)
        byte = NodeQueries(*this).ReadMemory(position);
    value = byte.value_or(0);
    return byte.has_value();
}

int CNode::GetNodeInfo(std::int32_t& NodeNameRef, std::int32_t& CommentsRef, std::int16_t& nodetype,
                       std::uint8_t& NodePosition)
{
    NodeInfoReply info;
    const int received = NodeQueries(*this).GetNodeInfo(info);
    NodeNameRef = info.nameRef.value_or(0);
    CommentsRef = info.commentRef.value_or(0);
    nodetype = info.type.value_or(kUnknownType);
    NodePosition = info.position.value_or(0);
    return received;
}

std::vector<CommandSet> CNode::GetCommandSets(int Index)
{
    return NodeQueries(*this).GetCommandSets(Index);
}

QString CNode::GetString(int StringRef)
{
    return NodeQueries(*this).GetString(StringRef);
}

void CNode::GetInputInfo(int InputIndex)
{
    NodeQueries(*this).GetInputInfo(InputIndex);
}

void CNode::GetOutputInfo(int OutputIndex)
{
    NodeQueries(*this).GetOutputInfo(OutputIndex);
}

QByteArray CNode::GetRelationship(int RelationshipRef)
{
    return NodeQueries(*this).GetRelationship(RelationshipRef);
}

std::vector<std::uint16_t> CNode::GetListOfIndexes(int ListRef)
{
    return NodeQueries(*this).GetListOfIndexes(ListRef);
}

RelationshipLevel CNode::GetRelationshipLevel(int RelationshipLevelRef)
{
    return NodeQueries(*this).GetRelationshipLevel(RelationshipLevelRef);
}

void CNode::GetAnalogThreshold(int ThresholdIndex)
{
    NodeQueries(*this).GetAnalogThreshold(ThresholdIndex);
}

FlashPattern CNode::GetFlashPattern(int FlashPatternIndex)
{
    return NodeQueries(*this).GetFlashPattern(FlashPatternIndex);
}

std::vector<std::uint16_t> CNode::GetAnalogCommands()
{
    return NodeQueries(*this).GetAnalogCommands();
}

SleepSettings CNode::GetSleepSettings()
{
    return NodeQueries(*this).GetSleepSettings();
}

std::vector<std::uint8_t> CNode::GetNodeSpecificProperties()
{
    return NodeQueries(*this).GetNodeSpecificProperties();
}

}  // namespace fenrik
