#include "simulator/MemoryImage.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kNameLength = 32;
constexpr int kOutputRecordSize = 128;
constexpr int kErased = 0xFF;

}  // namespace

/// Where a model holds its configuration; addresses from 0, 0 if it holds no such thing.
struct MemoryImage::Layout {
    int types[3];
    int nodeName;
    int inputNames;   // 32 bytes each
    int outputNames;  // 32 bytes each
    int outputs;      // records of 128 bytes: usage, flashing, shed level, brightness, sequence, relationship
    int shedOffset;   // in an output's record; brightness and sequence follow
    int relationOffset;
    bool pwmInHalves;  // half percents in place of percents
    int commands;      // high byte, low byte
    int commandStride;
    int switchTypes;
    int onStates;
    int threeWays;
    int switchStride;  // of the three
    int delays;        // off delay, on delay; two bytes each, high byte first
};

const MemoryImage::Layout* MemoryImage::FindLayout(int type)
{
    static constexpr Layout kLayouts[] = {
        {{0, 9, 255}, 0x175F, 0x1780, 0x1A00, 0x0080, 3, 7, false, 0x0D80, 2, 0x0E01, 0x0E00, 0x0E02, 3, 0x3400},
        {{2, 2, 2}, 0x0C5F, 0x0C7F, 0x0CFF, 0x0080, 2, 8, true, 0x0980, 7, 0x0982, 0x0983, 0x0984, 7, 0x2500},
        {{5, 5, 5}, 0x0C5F, 0x0C7F, 0, 0, 0, 0, false, 0x0980, 7, 0x0982, 0x0983, 0x0984, 7, 0},
    };
    for (const auto& layout : kLayouts)
        if (std::ranges::find(layout.types, type) != std::end(layout.types))
            return &layout;
    return nullptr;
}

bool MemoryImage::HoldsConfiguration(int type)
{
    return FindLayout(type) != nullptr;
}

MemoryImage::MemoryImage(const NodeConfig& node) : mBytes(kSize, kErased)
{
    PutHeader(node);
    const auto* layout = FindLayout(node.type);
    if (!layout)
        return;
    PutName(layout->nodeName, node.name);
    for (int i = 0; i < int(node.inputs.size()); ++i)
        PutInput(*layout, node, i);
    for (int i = 0; i < int(node.outputs.size()); ++i)
        PutOutput(*layout, node, i);
}

void MemoryImage::PutHeader(const NodeConfig& node)
{
    const auto& header = node.header;
    const int fields[] = {node.number,       header.nodeCount,  kErased,           kErased,      kErased,
                          header.version[0], header.version[1], header.version[2], header.month, header.day,
                          header.year >> 8,  header.year,       node.type};
    for (int address = 2; const int field : fields)
        Put(address++, field);
}

void MemoryImage::PutName(int address, const std::string& name)
{
    for (int i = 0; i < kNameLength; ++i)
        Put(address + i, i < int(name.size()) ? name[std::size_t(i)] : ' ');
}

void MemoryImage::PutInput(const Layout& layout, const NodeConfig& node, int index)
{
    const auto& input = node.inputs[std::size_t(index)];
    // An erased command is none.
    const int command = input.command == 0 ? 0xFFFF : input.command;
    Put(layout.commands + layout.commandStride * index, command >> 8);
    Put(layout.commands + layout.commandStride * index + 1, command);
    const int record = layout.switchStride * index;
    Put(layout.switchTypes + record, input.switchType);
    Put(layout.onStates + record, node.earlyOnStates ? index % 2 : input.onState);
    Put(layout.threeWays + record, input.threeWay ? 1 : 0);
    PutName(layout.inputNames + kNameLength * index, input.name);
}

void MemoryImage::PutOutput(const Layout& layout, const NodeConfig& node, int index)
{
    const auto& output = node.outputs[std::size_t(index)];
    const int record = layout.outputs + kOutputRecordSize * index;
    Put(record, int(output.usage));
    Put(record + 1, output.flashing ? 1 : 0);
    Put(record + layout.shedOffset, output.shedLevel);
    Put(record + layout.shedOffset + 1, layout.pwmInHalves ? output.pwmHalves : output.pwmHalves / 2);
    Put(record + layout.shedOffset + 2, output.sequence);
    for (int address = record + layout.relationOffset; const auto byte : output.relationship)
        Put(address++, byte);
    PutName(layout.outputNames + kNameLength * index, output.name);
    PutDelay(layout.delays + 4 * index, output.delayOff);
    PutDelay(layout.delays + 4 * index + 2, output.delayOn);
}

// A delay of nothing is left erased.
void MemoryImage::PutDelay(int address, int halfSeconds)
{
    if (halfSeconds == 0)
        return;
    Put(address, halfSeconds >> 8);
    Put(address + 1, halfSeconds);
}

}  // namespace fenrik
