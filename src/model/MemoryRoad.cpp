#include "model/MemoryRoad.h"

#include "model/CNode.h"
#include "model/CSystem.h"
#include "model/DownloadProgress.h"
#include "model/NodeDownload.h"
#include "model/NodeVersions.h"
#include "model/Relationship.h"
#include "model/TrimBlanks.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kRelationshipBudget = 30;
constexpr int kRecordBytes = 5;
constexpr int kFirstNoCommand = 4;  // high byte
constexpr int kNoDelay = 0xFF;      // high byte

/// Points of the first models that were built before on-states had their present codes.
std::int16_t OldOnState(int input)
{
    return input <= 8 ? 18 : input <= 12 ? 242 : 241;
}

Fixed4 LoadShed(int level)
{
    return level >= 1 && level <= CNode::kLoadShedLevels ? CNode::LoadShedVoltage(level) : Fixed4();
}

// A point can go away inside a wait: another part of the program may learn the node's type anew meanwhile.
template <typename Point, typename Change>
void Store(Point* point, const Change& change)
{
    if (point)
        change(*point);
}

}  // namespace

void MemoryRoad::Run(std::uint8_t& nodesInSystem)
{
    ReadHead(nodesInSystem);
    RefreshVersion();
    mProgress.Begin(NodeDownload::Steps(mNode, mGetNames));
    ReadName();
    ReadInputs();
    ReadOutputs();
    if (mGetNames) {
        ReadInputNames();
        ReadOutputNames();
    }
    // Differs from the text of the other road by one letter, and has always done so.
    mProgress.Status(QStringLiteral("Node information succesfully updated."));
}

std::uint8_t MemoryRoad::Read(int position)
{
    std::uint8_t value = 0;
    if (!mNode.GetData(mMode, position, value))
        throw DownloadEnded{DownloadEnded::Why::LinkFailed};
    mProgress.ThrowIfCancelled();
    return value;
}

std::uint8_t MemoryRoad::ReadStep(int position)
{
    const std::uint8_t value = Read(position);
    mProgress.Step(1);
    return value;
}

void MemoryRoad::ReadHead(std::uint8_t& nodesInSystem)
{
    const std::uint8_t number = Read(NodeImage::kNodeNumber);
    if (mNode.number() == 0)
        mNode.setNumber(number);
    nodesInSystem = std::max(nodesInSystem, Read(NodeImage::kNodeCount));
    mNode.setTypeID(Read(NodeImage::kNodeType));
}

void MemoryRoad::RefreshVersion()
{
    CSystem* system = mNode.Parent();
    if (mMode != CNode::kFromFile && system && system->SelectedNode() == &mNode)
        NodeVersions(*system).GetEmbeddedVersion(true);
}

void MemoryRoad::ReadName()
{
    const int address = mNode.Map().NodeNameAddr;
    if (address == 0) {
        mProgress.Step(NodeImage::kNameLength);
        return;
    }
    QByteArray name;
    for (int i = 0; i < NodeImage::kNameLength; ++i)
        name.append(char(ReadStep(address + i)));
    const QByteArray trimmed = TrimBlanks(name);
    mNode.TakeDownloadedName(trimmed.isEmpty() ? mNode.key() : QString::fromLatin1(trimmed));
}

// --- Inputs --------------------------------------------------------------------------------------------------------

void MemoryRoad::ReadInputs()
{
    mProgress.Status(QStringLiteral("Retrieving Input usage information..."));
    for (int number = 1; number <= mNode.Inputs(); ++number)
        ReadInCommand(number);

    const MemoryMap& map = mNode.Map();
    const InputBytes switchTypes = ReadInputBytes(map.SwitchTypeAddr);
    for (std::size_t i = 0; i < switchTypes.size(); ++i)
        Store(mNode.CDigitalInputs().Find(int(i) + 1), [&](auto& input) { input.setSwitchType(switchTypes[i]); });
    StoreOnStates(ReadInputBytes(map.OnStateAddr));
    const InputBytes threeWays = ReadInputBytes(map.ThreeWayAddr);
    for (std::size_t i = 0; i < threeWays.size(); ++i)
        Store(mNode.CDigitalInputs().Find(int(i) + 1), [&](auto& input) { input.setThreeWay(threeWays[i]); });
}

void MemoryRoad::ReadInCommand(int number)
{
    const MemoryMap& map = mNode.Map();
    if (map.InCommandAddr == 0) {
        mProgress.Step(2);
        return;
    }
    const int position = map.InCommandAddr + map.InCommandStride * (number - 1) + 1;
    const int high = ReadStep(position);
    const int command = high < kFirstNoCommand ? high * 256 + ReadStep(position + 1) : 0;
    Store(mNode.CDigitalInputs().Find(number), [&](auto& input) { input.setInCommand(std::int16_t(command)); });
}

MemoryRoad::InputBytes MemoryRoad::ReadInputBytes(int address)
{
    InputBytes bytes;
    for (int number = 1; number <= mNode.Inputs(); ++number) {
        if (address == 0)
            mProgress.Step(1);
        else
            bytes.push_back(ReadStep(address + mNode.Map().InputRecordStride * (number - 1) + 1));
    }
    return bytes;
}

void MemoryRoad::StoreOnStates(const InputBytes& bytes)
{
    // The look-alike of type 9 was never built with the old coding.
    const bool mayBeOld = mNode.typeID() == 0 || mNode.typeID() == 255;
    const bool old = mayBeOld && std::none_of(bytes.begin(), bytes.end(), [](std::uint8_t code) { return code > 1; });
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int number = int(i) + 1;
        const std::int16_t code = old ? OldOnState(number) : std::int16_t(bytes[i]);
        Store(mNode.CDigitalInputs().Find(number), [code](auto& input) { input.setOnState(code); });
    }
}

void MemoryRoad::ReadInputNames()
{
    mProgress.Status(QStringLiteral("Retrieving Input names..."));
    int position = mNode.Map().InputNameAddr;
    for (int number = 1; number <= mNode.Inputs(); ++number) {
        if (position == 0) {
            mProgress.Step(NodeImage::kNameLength);
            continue;
        }
        const QString name = ReadPointName(position, QStringLiteral("Retrieving Name for Input %1 - ").arg(number));
        position += NodeImage::kNameLength;
        Store(mNode.CDigitalInputs().Find(number),
              [&](auto& input) { input.setName(name.isEmpty() ? QStringLiteral("Input %1").arg(number) : name); });
    }
}

// --- Outputs -------------------------------------------------------------------------------------------------------

void MemoryRoad::ReadOutputs()
{
    mProgress.Status(QStringLiteral("Retrieving Output usage information..."));
    for (int number = 1; number <= mNode.Outputs(); ++number) {
        ReadRecord(number);
        ReadDelays(number);
    }
    for (int number = 1; number <= mNode.Outputs(); ++number)
        ReadRelationship(number);
}

void MemoryRoad::ReadRecord(int number)
{
    const int address = mNode.Map().OutputRecordAddr;
    if (address == 0) {
        mProgress.Step(kRecordBytes);
        return;
    }
    int position = address + NodeImage::kBlockLength * (number - 1);
    const int usage = ReadStep(position++);
    const int flashing = ReadStep(position++);
    if (NodeTypes::IsBrontes(mNode.typeID()))
        ++position;
    const int level = ReadStep(position++);
    const int width = ReadStep(position++);
    const int sequence = ReadStep(position);
    const bool halved = mNode.typeID() == 2;  // this model counts the pulse width in half percents
    Store(mNode.COutputs().Find(number), [&](COutput& output) {
        output.setUsageCode(usage);
        output.setFlashing(flashing);
        output.setLoadshed(LoadShed(level));
        output.setPWMValue(std::int16_t(halved ? Fixed4::RoundedQuotient(width, 2) : width));
        output.setSequence(std::int16_t(sequence));
    });
}

void MemoryRoad::ReadDelays(int number)
{
    const int address = mNode.Map().DelayTableAddr;
    if (address == 0)
        return;
    const int position = address + 4 * (number - 1) + 1;
    const int off = ReadDelay(position);
    const int on = ReadDelay(position + 2);
    Store(mNode.COutputs().Find(number), [&](COutput& output) {
        output.setDelayOff(Fixed4::Whole(off));
        output.setDelayOn(Fixed4::Whole(on));
    });
}

int MemoryRoad::ReadDelay(int position)
{
    const int high = ReadStep(position);
    if (high == kNoDelay)
        return 0;
    const int value = high * 256 + ReadStep(position + 1);
    return value > 0 ? int(Fixed4::RoundedQuotient(value + 1, 2)) : 0;
}

void MemoryRoad::ReadRelationship(int number)
{
    mProgress.Status(QStringLiteral("Retrieving relationships for Output %1...").arg(number));
    int budget = kRelationshipBudget;
    const COutput* output = mNode.COutputs().Find(number);
    if (output && output->UsageCode() == COutput::kByRelationship) {
        const int address = mNode.Map().RelationAddr;
        const QByteArray relationship =
            address == 0 ? QByteArray(1, char(Relationship::kEndLevel))
                         : ReadRelationshipBytes(address + NodeImage::kBlockLength * (number - 1), budget);
        Store(mNode.COutputs().Find(number), [&](COutput& out) { out.setRPN(TrimBlanks(relationship)); });
    }
    mProgress.Step(std::max(budget, 0));
}

QByteArray MemoryRoad::ReadRelationshipBytes(int position, int& budget)
{
    RelationshipReader reader;
    for (bool ended = false; !ended;) {
        ended = reader.Take(ReadStep(position++)) || position % NodeImage::kBlockLength == 0;
        --budget;
    }
    return reader.Bytes();
}

void MemoryRoad::ReadOutputNames()
{
    mProgress.Status(QStringLiteral("Retrieving Output names..."));
    const int address = mNode.Map().OutputNameAddr;
    for (int number = 1; number <= mNode.Outputs(); ++number) {
        const COutput* output = mNode.COutputs().Find(number);
        const bool named = output && (output->IsInUse() || output->UsageCode() == COutput::kNameOnly);
        if (address == 0 || !named) {
            mProgress.Step(NodeImage::kNameLength);
            continue;
        }
        const QString name = ReadPointName(address + NodeImage::kNameLength * (number - 1),
                                           QStringLiteral("Retrieving Name for Output %1 - ").arg(number));
        Store(mNode.COutputs().Find(number),
              [&](COutput& out) { out.setName(name.isEmpty() ? QStringLiteral("Output %1").arg(number) : name); });
    }
}

QString MemoryRoad::ReadPointName(int position, const QString& status)
{
    QByteArray name;
    mProgress.Status(status);
    for (int i = 0; i < NodeImage::kNameLength; ++i) {
        name.append(char(ReadStep(position + i)));
        mProgress.Status(status + QString::fromLatin1(name));
    }
    return QString::fromLatin1(TrimBlanks(name));
}

}  // namespace fenrik
