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

/// What follows from a node's type number.
struct NodeType {
    static constexpr std::int16_t kAsBefore = -1;  ///< bits_per_input stays what it was

    std::int16_t typeID;
    const char* TypeName;
    std::int16_t Inputs;
    std::int16_t Outputs;
    std::int16_t ReservedCount;   ///< kept with the row, nothing reads it
    std::int16_t bits_per_input;  ///< width of one input in the node's report of input states
    bool Refreshable;             ///< the tool can download the model's data
    bool OutputDelay;             ///< the outputs have on and off delays
    bool VFlashSupport;           ///< the configuration may lie in a variable flash structure
    const char* DiagInputLabel;   ///< what panels show in place of a list of inputs
    const char* DiagOutputLabel;  ///< what panels show in place of a list of outputs
    const MemoryMap* map;         ///< never null
};

/// The table of node models.
namespace NodeTypes {
inline constexpr std::int16_t kUnknown = 254;

/// The row of `typeID`; the row of kUnknown for a number that has none.
[[nodiscard]] const NodeType& Row(int typeID);

/// True for the first model generation and its two look-alikes.
[[nodiscard]] bool IsBrontes(int typeID);

/// Pin of input or output `number` (from 1), empty for a model or a number without one.
[[nodiscard]] QString InputPin(int typeID, int number);
[[nodiscard]] QString OutputPin(int typeID, int number);

/// What a new output's PWMKind is.
[[nodiscard]] std::uint8_t PwmKind(int typeID, int output);
}  // namespace NodeTypes

}  // namespace fenrik
