#pragma once

#include "model/NodeImage.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

class CNode;
class DownloadProgress;
struct MemoryMap;

/// Reads a node's configuration out of its memory image, byte by byte, from a file or over the network. Where a
/// model has no table (its address in the MemoryMap is 0), nothing is read and what the node holds stays.
///
///   position (i is the number of the point)           content
///   NodeNameAddr                                      name, 32 characters
///   InCommandAddr + InCommandStride x (i - 1) + 1     command, high byte first; above 1023 stands for none
///   SwitchTypeAddr + InputRecordStride x (i - 1) + 1  switch type; likewise OnStateAddr and ThreeWayAddr
///   OutputRecordAddr + 128 x (i - 1)                  usage code, flashing, load-shed level, pulse width, sequence;
///                                                     on the types 0, 9 and 255 one unused byte before the level
///   RelationAddr + 128 x (i - 1)                      relationship, to the end of the 128 bytes at most
///   DelayTableAddr + 4 x (i - 1) + 1                  off delay, on delay: half seconds less one, high byte first;
///                                                     a high byte of 0xFF stands for none
///   InputNameAddr + 32 x (i - 1)                      name, 32 characters; likewise OutputNameAddr
class MemoryRoad {
public:
    /// `mode` as for CNode::GetData.
    MemoryRoad(CNode& node, int mode, bool getNames, DownloadProgress& progress)
        : mNode(node), mMode(mode), mGetNames(getNames), mProgress(progress)
    {
    }

    /// Throws DownloadEnded. `nodesInSystem` grows to the count that the image names.
    void Run(std::uint8_t& nodesInSystem);

private:
    /// One byte for each input, by number from 0.
    using InputBytes = std::vector<std::uint8_t>;

    void ReadHead(std::uint8_t& nodesInSystem);
    void RefreshVersion();
    void ReadName();
    void ReadInputs();
    void ReadInCommand(int number);
    [[nodiscard]] InputBytes ReadInputBytes(int address);
    void StoreOnStates(const InputBytes& bytes);
    void ReadOutputs();
    void ReadRecord(int number);
    void ReadDelays(int number);
    [[nodiscard]] int ReadDelay(int position);
    void ReadRelationship(int number);
    [[nodiscard]] QByteArray ReadRelationshipBytes(int position, int& budget);
    void ReadInputNames();
    void ReadOutputNames();
    [[nodiscard]] QString ReadPointName(int position, const QString& status);

    [[nodiscard]] std::uint8_t Read(int position);
    [[nodiscard]] std::uint8_t ReadStep(int position);

    CNode& mNode;
    int mMode;
    bool mGetNames;
    DownloadProgress& mProgress;
};

}  // namespace fenrik
