#include "model/NodeQueries.h"

#include "link/CMsgHandler.h"
#include "model/CNode.h"
#include "model/DownloadHost.h"
#include "model/NodeLink.h"
#include "shared/EventPump.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kQuery = 940;
constexpr int kAnnouncement = 903;
constexpr int kMemoryRead = 923;
constexpr int kDataFrame = 950;
constexpr int kTries = 3;
constexpr int kMemoryTries = 2;
constexpr int kLargestIndex = 255;
constexpr std::int16_t kTypeWithProperties = 16;

/// Values of a query's data, or of its high byte where an index follows.
enum Query {
    kNodeInfo = 0x0001,
    kAnalogCommands = 0x0002,
    kSleepSettings = 0x0004,
    kNodeSpecificProperties = 0x0005,
    kListOfIndexes = 0x0100,
    kInputInfo = 0x0200,
    kOutputInfo = 0x0300,
    kCommandSets = 0x0800,
    kString = 0x0A00,
    kRelationship = 0x0B00,
    kRelationshipLevel = 0x0C00,
    kAnalogThreshold = 0x0D00,
    kFlashPattern = 0x0E00,
};

int Indexed(int query, int index)
{
    return query | (index & 0xFF);
}

}  // namespace

std::vector<std::uint8_t> NodeQueries::Ask(int data, int* received)
{
    const NodeLink* link = mNode.Link();
    int count = 0;
    std::vector<std::uint8_t> reply;
    if (link) {
        CMessage message;
        message.Command = kQuery;
        message.data = data;
        message.ReplyCommand = kAnnouncement;
        bool bigEndian = false;
        reply = link->handler.SendMessageGetByteArr(message, kTries, count, bigEndian, false, false);
        // Not even built: the link is closed, unless it refuses to ask after its failures, which has a code.
        if (message.rawForm == CMessage::RawForm::None && count == 0)
            mLinkClosed = true;
    }
    // The count can be that of several attempts, or a code below 0; the array of a failure is a dummy.
    reply.resize(std::size_t(std::clamp(count, 0, int(reply.size()))));
    if (received)
        *received = count;
    return reply;
}

std::optional<CMessage> NodeQueries::AskForFrame(CMessage& message, int replyCommand, int tries)
{
    const NodeLink* link = mNode.Link();
    if (!link)
        return std::nullopt;
    const auto reply = link->handler.SendMessageGetReply(message, replyCommand, tries, false, false);
    if (message.rawForm == CMessage::RawForm::None)
        mLinkClosed = true;
    return reply;
}

bool NodeQueries::SelectPage(int reference)
{
    CMessage message;
    message.Command = kQuery;
    message.extended = 1;
    message.data = reference >> 8 & 0xFF;
    return AskForFrame(message, kAnnouncement, kTries).has_value();
}

std::vector<std::uint8_t> NodeQueries::AskByReference(int query, int reference)
{
    if (reference > kLargestIndex)
        SelectPage(reference);
    return Ask(Indexed(query, reference));
}

int NodeQueries::GetNodeInfo(NodeInfoReply& info)
{
    int received = 0;
    info = NodeReplies::DecodeNodeInfo(Ask(kNodeInfo, &received));
    mNode.TakeNodeInfo(info);
    return received;
}

std::vector<CommandSet> NodeQueries::GetCommandSets(int index)
{
    // Command sets are counted from 1, so 256 still lies on the first page; its low byte goes out all the same.
    if (index - 1 > kLargestIndex)
        SelectPage(index);
    return NodeReplies::DecodeCommandSets(Ask(Indexed(kCommandSets, index)));
}

QString NodeQueries::GetString(int reference)
{
    return NodeReplies::DecodeString(AskByReference(kString, reference));
}

QByteArray NodeQueries::GetRelationship(int reference)
{
    // A relationship of the wrong page would tell the user something false; a wrong name he would notice.
    if (reference > kLargestIndex && !SelectPage(reference))
        return {};
    return NodeReplies::DecodeRelationship(Ask(Indexed(kRelationship, reference)));
}

std::vector<std::uint16_t> NodeQueries::GetListOfIndexes(int reference)
{
    return NodeReplies::DecodeWords(AskByReference(kListOfIndexes, reference));
}

RelationshipLevel NodeQueries::GetRelationshipLevel(int reference)
{
    return NodeReplies::DecodeRelationshipLevel(AskByReference(kRelationshipLevel, reference));
}

void NodeQueries::GetAnalogThreshold(int index)
{
    (void)Ask(Indexed(kAnalogThreshold, index));
}

FlashPattern NodeQueries::GetFlashPattern(int index)
{
    return NodeReplies::DecodeFlashPattern(Ask(Indexed(kFlashPattern, index)));
}

std::vector<std::uint16_t> NodeQueries::GetAnalogCommands()
{
    return NodeReplies::DecodeBigEndianWords(Ask(kAnalogCommands));
}

SleepSettings NodeQueries::GetSleepSettings()
{
    return NodeReplies::DecodeSleepSettings(Ask(kSleepSettings));
}

std::vector<std::uint8_t> NodeQueries::GetNodeSpecificProperties()
{
    auto reply = Ask(kNodeSpecificProperties);
    if (mNode.typeID() != kTypeWithProperties)
        reply.clear();
    return reply;
}

void NodeQueries::GetInputInfo(int number)
{
    const auto reply = Ask(Indexed(kInputInfo, number - 1));
    const auto analog = NodeReplies::IsAnalogInput(reply);
    if (!analog)
        return;
    if (*analog) {
        if (const auto list = NodeReplies::AnalogThresholdList(reply))
            AskForThresholds(*list);
        return;
    }
    CDigitalInput* input = mNode.CDigitalInputs().Find(number);
    if (!input)
        return;
    if (NodeReplies::IsUnconfiguredInput(reply))
        input->Init(mNode, std::int16_t(number));
    else
        NodeReplies::ApplyDigitalInput(reply, *input);
}

void NodeQueries::AskForThresholds(int listReference)
{
    // The list can be as long as the node likes to make it; the user need not wait for its end.
    for (const std::uint16_t index : GetListOfIndexes(listReference)) {
        if (Cancelled() || mLinkClosed)
            return;
        GetAnalogThreshold(index);
    }
}

void NodeQueries::GetOutputInfo(int number)
{
    const auto reply = Ask(Indexed(kOutputInfo, number - 1));
    if (COutput* output = mNode.COutputs().Find(number))
        NodeReplies::ApplyOutput(reply, *output);
}

std::optional<std::uint8_t> NodeQueries::ReadMemory(int position)
{
    CMessage message;
    message.Command = kMemoryRead;
    message.State = 1;
    message.data = position - 1;
    const auto reply = AskForFrame(message, kDataFrame, kMemoryTries);
    return reply ? std::optional(std::uint8_t(reply->data)) : std::nullopt;
}

std::optional<std::uint16_t> NodeQueries::ReadVariableFlash(int address)
{
    CMessage message;
    message.Command = kQuery;
    message.data = address;
    const auto reply = AskForFrame(message, kDataFrame, kTries);
    if (!reply || reply->State != 0 || reply->extended != 0)
        return std::nullopt;
    return std::uint16_t(reply->data);
}

bool NodeQueries::Cancelled() const
{
    const NodeLink* link = mNode.Link();
    return link && (link->pump.Stopped() || (link->host && link->host->DidCancel()));
}

}  // namespace fenrik
