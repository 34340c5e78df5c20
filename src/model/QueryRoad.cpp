#include "model/QueryRoad.h"

#include "link/CMsgHandler.h"
#include "model/CNode.h"
#include "model/DownloadProgress.h"
#include "model/NodeDownload.h"
#include "model/NodeLink.h"
#include "model/NodeQueries.h"
#include "model/TrimBlanks.h"

namespace fenrik {

namespace {

constexpr int kNameSteps = 32;
constexpr int kInputSteps = 5;
constexpr int kOutputSteps = 7;
constexpr int kRelationshipSteps = 23;

}  // namespace

void QueryRoad::Run(const NodeInfoReply& info)
{
    ThrowIfClosed();
    mProgress.Begin(NodeDownload::Steps(mNode, mGetNames));
    ReadName(info);
    // As a rule the field has this value already, and the points stay those that the node's discovery made.
    mNode.setTypeID(info.type.value_or(CNode::kUnknownType));
    mProgress.Step(kNameSteps);
    ReadInputs();
    ReadOutputs();
    if (mGetNames) {
        ReadInputNames();
        ReadOutputNames();
    }
    mNode.setIProtocol(CNode::kProtocolQueries);
    if (mNode.Link()->handler.CommErrorCount() != 0)
        throw DownloadEnded{DownloadEnded::Why::LinkFailed};
    mProgress.Status(QStringLiteral("Node information successfully updated."));
}

void QueryRoad::ThrowIfClosed() const
{
    if (mQueries.LinkClosed())
        throw DownloadEnded{DownloadEnded::Why::LinkFailed};
}

QString QueryRoad::ReadText(int reference, const QString& otherwise)
{
    const QString text = TrimBlanks(mQueries.GetString(reference));
    ThrowIfClosed();
    return text.isEmpty() ? otherwise : text;
}

void QueryRoad::ReadName(const NodeInfoReply& info)
{
    const int reference = info.nameRef.value_or(0);
    const QString number = mNode.key();
    mNode.TakeDownloadedName(reference == NodeReplies::kNoReference ? number : ReadText(reference, number));
}

void QueryRoad::ReadInputs()
{
    mProgress.Status(QStringLiteral("Retrieving Input usage information..."));
    for (int number = 1; number <= mNode.Inputs(); ++number) {
        mQueries.GetInputInfo(number);
        ThrowIfClosed();
        mProgress.Step(kInputSteps);
    }
}

void QueryRoad::ReadOutputs()
{
    mProgress.Status(QStringLiteral("Retrieving Output usage information..."));
    for (int number = 1; number <= mNode.Outputs(); ++number) {
        mQueries.GetOutputInfo(number);
        ThrowIfClosed();
        mProgress.Step(kOutputSteps);
        ReadRelationship(number);
        mProgress.Step(kRelationshipSteps);
    }
}

void QueryRoad::ReadRelationship(int number)
{
    COutput* output = mNode.COutputs().Find(number);
    if (!output)
        return;
    if (output->RelationshipRef() == COutput::kNoReference) {
        output->setUsageCode(COutput::kNotUsed);
        return;
    }
    output->setUsageCode(COutput::kByRelationship);
    const QByteArray relationship = TrimBlanks(mQueries.GetRelationship(output->RelationshipRef()));
    ThrowIfClosed();
    // Found anew: the node's points may have been made anew during the wait.
    if (COutput* after = mNode.COutputs().Find(number))
        after->setRPN(relationship);
}

void QueryRoad::ReadInputNames()
{
    mProgress.Status(QStringLiteral("Retrieving Input names..."));
    for (int number = 1; number <= mNode.Inputs(); ++number) {
        const CDigitalInput* input = mNode.CDigitalInputs().Find(number);
        if (input && input->NameRef() != CDigitalInput::kNoReference) {
            const QString name = ReadText(input->NameRef(), QStringLiteral("Input %1").arg(number));
            if (CDigitalInput* named = mNode.CDigitalInputs().Find(number))
                named->setName(name);
            mProgress.Status(QStringLiteral("Retrieving Name for Input %1 - ").arg(number) + name);
        }
        mProgress.Step(kNameSteps);
    }
}

void QueryRoad::ReadOutputNames()
{
    mProgress.Status(QStringLiteral("Retrieving Output names..."));
    for (int number = 1; number <= mNode.Outputs(); ++number) {
        const COutput* output = mNode.COutputs().Find(number);
        if (output && output->NameRef() != COutput::kNoReference) {
            const QString name = ReadText(output->NameRef(), QStringLiteral("Output %1").arg(number));
            if (COutput* named = mNode.COutputs().Find(number))
                named->setName(name);
            mProgress.Status(QStringLiteral("Retrieving Name for Output %1 - ").arg(number) + name);
        }
        mProgress.Step(kNameSteps);
    }
}

}  // namespace fenrik
