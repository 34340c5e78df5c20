#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// Where a model keeps its configuration tables in its 32,768-byte memory image. Positions count from 1; zero for
/// a model without such a table.
struct MemoryMap {
    std::int16_t NodeNameAddr = 0;       ///< the node's name, 32 characters
    std::int16_t InputNameAddr = 0;      ///< input names, 32 characters each
    std::int16_t SpareNameAddr = 0;      ///< kept with the row, nothing reads it
    std::int16_t OutputNameAddr = 0;     ///< output names, 32 characters each
    std::int16_t OutputRecordAddr = 0;   ///< record of output 1; records are 128 bytes apart
    std::int16_t RelationAddr = 0;       ///< relationship of output 1, 128 bytes apart as well
    std::int16_t InCommandAddr = 0;      ///< command word of input 1, less one position
    std::int16_t InCommandStride = 0;    ///< distance between command words
    std::int16_t SwitchTypeAddr = 0;     ///< switch type of input 1, less one position
    std::int16_t OnStateAddr = 0;        ///< on-state of input 1, less one position
    std::int16_t ThreeWayAddr = 0;       ///< three-way byte of input 1, less one position
    std::int16_t InputRecordStride = 0;  ///< distance between the records of the three above
    std::int16_t DelayTableAddr = 0;     ///< output delays, four bytes an output, less one position
};

/// What follows from a node's type number. As it stands here: a node about which nothing is known yet.
struct NodeType {
    QString TypeName = QStringLiteral("Unknown Type");
    std::int16_t Inputs = 0;
    std::int16_t Outputs = 0;
    std::int16_t ReservedCount = 0;   ///< kept with the row, nothing reads it
    std::int16_t bits_per_input = 0;  ///< width of one input in the node's report of input states
    bool Refreshable = false;         ///< the tool can download the model's data
    bool OutputDelay = false;         ///< the outputs have on and off delays
    bool VFlashSupport = false;       ///< the configuration may lie in a variable flash structure
    QString DiagInputLabel;           ///< what panels show in place of a list of inputs
    QString DiagOutputLabel;          ///< what panels show in place of a list of outputs
    MemoryMap map;
};

}  // namespace fenrik
