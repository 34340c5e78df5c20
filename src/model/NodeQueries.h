#pragma once

#include "model/NodeReplies.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace fenrik {

class CNode;
struct CMessage;

/// Asks the mounted node about its configuration, on behalf of `node`, which takes the answers.
///
///   command  state  extended  data                      reply
///   923      1      0         memory offset from 0      950, the byte in the low half of its data
///   940      0      0         query << 8 | index        903 and frames of 950: a multi-frame reply
///   940      0      1         high byte of a reference  903: page select
///   940      0      0         variable flash address    950, two bytes in its data
///
///   data                 query
///   0x0001               node info
///   0x0002               analog commands
///   0x0004               sleep settings
///   0x0005               properties of the model
///   0x01 and reference   list of indexes
///   0x02 and number - 1  input
///   0x03 and number - 1  output
///   0x08 and reference   command sets
///   0x0A and reference   string
///   0x0B and reference   relationship
///   0x0C and reference   level of a relationship
///   0x0D and index       threshold of an analog input
///   0x0E and index       flash pattern
///
/// A query has room for the low byte of a reference only; the high byte, unless it is 0, goes before it in a page
/// select. Reference 0xFFFF means none: nobody asks for it.
class NodeQueries {
public:
    explicit NodeQueries(CNode& node) : mNode(node) {}

    /// Number of bytes received; below 0 after a refusal or a failure. The node takes what came, and `info` has it.
    int GetNodeInfo(NodeInfoReply& info);
    std::vector<CommandSet> GetCommandSets(int index);
    QString GetString(int reference);
    void GetInputInfo(int number);
    void GetOutputInfo(int number);
    QByteArray GetRelationship(int reference);
    std::vector<std::uint16_t> GetListOfIndexes(int reference);
    RelationshipLevel GetRelationshipLevel(int reference);

    /// Asks and drops the answer: nothing that the tool shows depends on a threshold, but the traffic does show it.
    void GetAnalogThreshold(int index);

    FlashPattern GetFlashPattern(int index);
    std::vector<std::uint16_t> GetAnalogCommands();
    SleepSettings GetSleepSettings();

    /// The reply as it came; empty for any model but type 16.
    std::vector<std::uint8_t> GetNodeSpecificProperties();

    /// The byte at `position` (from 1) of the node's memory.
    std::optional<std::uint8_t> ReadMemory(int position);

    /// The word at `address` (from 0) of the node's variable flash; nothing if the node has no such structure.
    std::optional<std::uint16_t> ReadVariableFlash(int address);

    /// A request could not be sent since the link is closed. Stays true.
    [[nodiscard]] bool LinkClosed() const { return mLinkClosed; }

private:
    [[nodiscard]] std::vector<std::uint8_t> Ask(int data, int* received = nullptr);
    [[nodiscard]] std::vector<std::uint8_t> AskByReference(int query, int reference);
    bool SelectPage(int reference);
    std::optional<CMessage> AskForFrame(CMessage& message, int replyCommand, int tries);
    void AskForThresholds(int listReference);
    [[nodiscard]] bool Cancelled() const;

    CNode& mNode;
    bool mLinkClosed = false;
};

}  // namespace fenrik
