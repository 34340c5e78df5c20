#include "model/VariableFlashRoad.h"

#include "model/CNode.h"
#include "model/DownloadProgress.h"
#include "model/Relationship.h"
#include "model/TrimBlanks.h"
#include "shared/CommandTable.h"

#include <algorithm>
#include <array>

namespace fenrik {

namespace {

constexpr VariableFlash::Form kForm;
constexpr int kTotalSteps = 100;
constexpr int kInputs = 3;
constexpr int kFirstInputWord = 12;
constexpr std::int16_t kOnState = 17;
constexpr std::int16_t kSwitchType = 3;

/// The outputs of this model always drive the same parts of the vehicle.
constexpr std::array<const char*, 8> kOutputNames{
    "Front Fan", "Rear Fan",  "ATM Power",         "Liquid Solenoid Valve",
    "Condenser", "Air Relay", "Compressor Clutch", "Water Pump"};

}  // namespace

void VariableFlashRoad::Run()
{
    mProgress.Status(QStringLiteral("Retrieving Node information..."));
    mProgress.Begin(kTotalSteps);
    mProgress.Status(QStringLiteral("Progress - Loading Node %1").arg(mNode.number()));
    ReadInputs();
    ReadOutputs();
    for (int number = 1; number <= int(kOutputNames.size()); ++number)
        ReadRelationship(number);
}

int VariableFlashRoad::Walk(std::span<const int> path) const
{
    const int address = mFlash.Walk(kForm, path);
    if (address == VariableFlash::kNotThere)
        throw DownloadEnded{DownloadEnded::Why::FlashBroken};
    return address;
}

void VariableFlashRoad::ReadInputs()
{
    constexpr std::array path{0};
    const int entry = Walk(path);
    mProgress.Step(2);
    for (int number = 1; number <= kInputs; ++number) {
        const int address = entry + kFirstInputWord + 2 * (number - 1);
        if (address + 2 > VariableFlash::kSize)
            throw DownloadEnded{DownloadEnded::Why::FlashBroken};
        StoreInput(number, mFlash.Word(address, true));
        mProgress.Step(2);
    }
}

void VariableFlashRoad::StoreInput(int number, int command)
{
    CDigitalInput* input = mNode.CDigitalInputs().Find(number);
    if (!input)
        return;
    input->setInCommand(std::int16_t(command));
    if (command >= CommandTable::kSize)
        return;
    input->setName(mCommands.FriendlyName(command));
    input->setOnState(kOnState);
    input->setSwitchType(kSwitchType);
    input->setThreeWay(0);
}

void VariableFlashRoad::ReadOutputs()
{
    constexpr std::array path{5, 0};
    const int first = Walk(path);
    mProgress.Step(2);
    for (int number = 1; number <= int(kOutputNames.size()); ++number) {
        const int address = first + number - 1;
        if (address >= VariableFlash::kSize)
            throw DownloadEnded{DownloadEnded::Why::FlashBroken};
        const int volts = mFlash.Byte(address);
        if (COutput* output = mNode.COutputs().Find(number)) {
            output->setLoadshed(Fixed4::Whole(volts));
            output->setName(QLatin1String(kOutputNames[std::size_t(number - 1)]));
            output->setFlashing(0);
            output->setSequence(0);
            output->setUsageCode(COutput::kByRelationship);
            output->setPermOn(false);
        }
        mProgress.Step(1);
    }
}

void VariableFlashRoad::ReadRelationship(int number)
{
    const std::array path{1, number - 1};
    const int entry = Walk(path);
    const int end = int(std::min(entry + mFlash.ReadEntry(entry, kForm).size, std::int64_t(VariableFlash::kSize)));
    RelationshipReader reader;
    bool ended = false;
    for (int address = entry + kForm.width; !ended && address < end; ++address) {
        ended = reader.Take(mFlash.Byte(address));
        mProgress.Step(1);
    }
    if (!ended)
        reader.Take(Relationship::kEndLevel);
    if (COutput* output = mNode.COutputs().Find(number))
        output->setRPN(TrimBlanks(reader.Bytes()));
}

}  // namespace fenrik
