#include "diagnostics/Flash.h"

#include "diagnostics/Graphics.h"
#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "shared/ErrorReporter.h"

#include <QScopeGuard>

#include <algorithm>
#include <optional>
#include <vector>

namespace fenrik {

namespace {

enum Number { kAnnouncement = 903, kByteRequest = 923, kHeaderRequest = 940, kValueReply = 950 };

constexpr int kHeaderTries = 2;
constexpr int kNothing = CMsgHandler::kNoAnswer;
constexpr int kByteTries = 3;
constexpr int kMostMisses = 3;
constexpr std::size_t kYearByte = 15;
constexpr int kYearHighAddress = 12;

using TextField = QString HeaderRecord::*;

struct HeaderByte {
    std::size_t position;  // from 1
    TextField field;
};

constexpr HeaderByte kHeaderBytes[] = {
    {7, &HeaderRecord::byte7},         {8, &HeaderRecord::nodeCount},      {9, &HeaderRecord::versionFourth},
    {10, &HeaderRecord::versionThird}, {11, &HeaderRecord::versionSecond}, {12, &HeaderRecord::versionFirst},
    {13, &HeaderRecord::dateSecond},   {14, &HeaderRecord::dateFirst},
};

struct HeaderWord {
    std::size_t position;
    std::int16_t HeaderRecord::*field;
};

constexpr HeaderWord kHeaderWords[] = {{1, &HeaderRecord::word1}, {3, &HeaderRecord::word3}, {5, &HeaderRecord::word5}};

struct ByteAddress {
    int address;
    TextField field;
};

constexpr ByteAddress kByteAddresses[] = {
    {2, &HeaderRecord::nodeNumber},    {3, &HeaderRecord::nodeCount},           {7, &HeaderRecord::versionFirst},
    {8, &HeaderRecord::versionSecond}, {9, &HeaderRecord::versionThird},        {10, &HeaderRecord::dateFirst},
    {11, &HeaderRecord::dateSecond},   {kYearHighAddress, &HeaderRecord::year}, {13, &HeaderRecord::year},
};

constexpr TextField kShownFields[] = {
    &HeaderRecord::nodeNumber,   &HeaderRecord::nodeCount, &HeaderRecord::versionFirst, &HeaderRecord::versionSecond,
    &HeaderRecord::versionThird, &HeaderRecord::dateFirst, &HeaderRecord::dateSecond,   &HeaderRecord::year,
};

const QString& Unknown()
{
    static const QString text = QStringLiteral("??");
    return text;
}

QString YearText(int high, int low)
{
    return QString::number(high * 256 + low).right(2);
}

/// A refusal and a whole reply, also one of no bytes, are answers; anything else is worth another attempt.
bool IsTorn(int received, std::size_t announced)
{
    return received == kNothing || (received >= 0 && std::size_t(received) < announced);
}

/// In the format "00"; a text that is no number passes as it is.
QString Two(const QString& text)
{
    return text.rightJustified(2, QLatin1Char('0'));
}

bool HasPic(int typeID)
{
    return typeID == 2 || typeID == 9 || typeID == 16;
}

/// The model with both chips, and the only one whose node keeps their versions.
bool HasFpga(int typeID)
{
    return typeID == 16;
}

}  // namespace

Flash::Flash(CSystem& system, CMsgHandler& handler, Graphics& graphics, ErrorReporter& errors, NodeViewHost& host)
    : mSystem(system), mHandler(handler), mGraphics(graphics), mErrors(errors), mHost(host), mVersions(system)
{
}

bool Flash::ShowsMountedNode() const
{
    const CNode* node = mSystem.SelectedNode();
    return node && node == mSystem.MountedNode();
}

// --- The view ------------------------------------------------------------------------------------------------------

void Flash::DisplayFlashInfo()
{
    if (mReading)
        return;
    if (!ShowsMountedNode()) {
        DisplayNotMounted();
        return;
    }
    mReading = true;
    mHost.SetUIState(NodeViewHost::kBusy);
    const auto done = qScopeGuard([this] {
        mReading = false;
        mHost.SetUIState(NodeViewHost::kReady);
    });
    mGraphics.ClearFace();
    mGraphics.PutTitleLines({QStringLiteral("Please wait...")}, false, false);

    HeaderRecord header;
    Versions versions;
    if (const CNode* node = mSystem.MountedNode(); node->HeaderInfoAvailable())
        Recall(*node, header, versions);
    else
        Read(header, versions);

    if (mHost.DisplayState() != NodeViewHost::kViewFlashInfo)
        return;  // the face belongs to another view by now
    if (ShowsMountedNode())
        DrawLines(*mSystem.MountedNode(), header, versions);
    else
        DisplayNotMounted();
}

void Flash::DisplayNotMounted()
{
    mGraphics.ClearFace();
    mGraphics.PutTitleLines({QStringLiteral("Selected Node Not Mounted")}, true, false);
}

void Flash::DrawLines(const CNode& node, const HeaderRecord& header, const Versions& versions)
{
    // A line that does not apply is empty, so that the others keep their rows.
    const auto onlyIf = [](bool applies, const QString& text) { return applies ? text.trimmed() : QString(); };
    const bool beta = !versions.beta.isEmpty();
    const bool pic = HasPic(node.typeID());
    const bool fpga = HasFpga(node.typeID());
    const QStringList labels{QStringLiteral("Node Type"),
                             QStringLiteral("Node Number"),
                             QStringLiteral("Network Composer Version"),
                             QStringLiteral("Compiled"),
                             QStringLiteral("Operating System Version"),
                             onlyIf(beta, QStringLiteral("Beta Version")),
                             onlyIf(pic, QStringLiteral("PIC Code Version")),
                             onlyIf(fpga, QStringLiteral("FPGA Version"))};
    const QStringList values{
        node.TypeName().trimmed(),
        Two(header.nodeNumber) + QStringLiteral(" of ") + Two(header.nodeCount),
        QStringList{Two(header.versionFirst), Two(header.versionSecond), Two(header.versionThird)}.join(
            QLatin1Char('.')),
        QStringList{Two(header.dateFirst), Two(header.dateSecond), Two(header.year)}.join(QLatin1Char('/')),
        versions.os.trimmed(),
        onlyIf(beta, versions.beta),
        onlyIf(pic, versions.pic),
        onlyIf(fpga, versions.fpga)};
    mGraphics.ClearFace();
    mGraphics.PutTitleLines(labels, false, false);
    mGraphics.PutTitleLines(values, false, true);
}

// --- What is asked -------------------------------------------------------------------------------------------------

void Flash::Recall(const CNode& node, HeaderRecord& header, Versions& versions)
{
    header = node.Header();
    versions.beta = node.osBetaVersion();
    versions.pic = HasFpga(node.typeID()) ? node.PICVersion() : mPicVersions.value(node.number());
    versions.fpga = node.FPGAVersion();
    versions.os = EmbeddedVersion(false);
}

void Flash::Read(HeaderRecord& header, Versions& versions)
{
    mHost.VerifyNode(mSystem.MountedNode(), true);
    GetHeaderInfo(header);
    ReadVersions(versions);
    const bool chipsRead = ReadChips(versions);

    CNode* node = mSystem.MountedNode();
    if (!node)
        return;
    const bool valid = IsHeaderValid(header);
    if (valid)
        node->setHeader(header);
    node->setOsBetaVersion(versions.beta);
    node->setHeaderInfoAvailable(valid && versions.os != QLatin1String("??.??") && chipsRead);
}

void Flash::ReadVersions(Versions& versions)
{
    versions.os = EmbeddedVersion(true);
    Guarded(mErrors, "Flash:GetBetaVersion", [this, &versions] { versions.beta = mVersions.GetBetaVersion(); });
}

bool Flash::ReadChips(Versions& versions)
{
    const CNode* asked = mSystem.MountedNode();
    if (!asked || !HasPic(asked->typeID()))
        return true;
    const bool fpga = HasFpga(asked->typeID());
    versions.pic = ChipVersion(NodeVersions::kPic);
    if (fpga)
        versions.fpga = ChipVersion(NodeVersions::kFpga);

    CNode* node = mSystem.MountedNode();
    if (!node)
        return false;
    if (!fpga) {
        mPicVersions[node->number()] = versions.pic;
        return true;
    }
    const QString unknown = QStringLiteral("?");
    if (versions.pic != unknown)
        node->setPICVersion(versions.pic);
    if (versions.fpga != unknown)
        node->setFPGAVersion(versions.fpga);
    return versions.pic != unknown && versions.fpga != unknown;
}

QString Flash::EmbeddedVersion(bool force)
{
    QString version = QStringLiteral("??.??");
    Guarded(mErrors, "Flash:GetEmbeddedVersion",
            [this, force, &version] { version = mVersions.GetEmbeddedVersion(force); });
    return version;
}

QString Flash::ChipVersion(int chip)
{
    QString version = QStringLiteral("?");
    Guarded(mErrors, "Flash:GetPeriphICversion",
            [this, chip, &version] { version = mVersions.GetPeriphICversion(chip); });
    return version;
}

// --- The header ----------------------------------------------------------------------------------------------------

void Flash::GetHeaderInfo(HeaderRecord& header)
{
    header = HeaderRecord();
    Guarded(mErrors, "Flash:GetHeaderInfo", [this, &header] {
        const CNode* node = mSystem.MountedNode();
        if (!node)
            return;
        header.nodeNumber = QString::number(node->number());
        if (node->iProtocol() != CNode::kProtocolImage)
            ReadWhole(header);
        node = mSystem.MountedNode();
        if (node && node->iProtocol() == CNode::kProtocolImage)
            ReadByBytes(header);
    });
}

void Flash::ReadWhole(HeaderRecord& header)
{
    CMessage request;
    request.Command = kHeaderRequest;
    request.ReplyCommand = kAnnouncement;
    int received = kNothing;
    bool bigEndian = false;
    std::vector<std::uint8_t> bytes;
    // One attempt at a time: over several, the link's count of bytes can't tell a whole reply from two torn ones.
    for (int attempt = 0; attempt < kHeaderTries && IsTorn(received, bytes.size()); ++attempt) {
        // Failures of earlier requests would make the link refuse this one, and that would pass for the node's answer.
        mHandler.ClearCommErrorCount();
        received = 0;
        bytes = mHandler.SendMessageGetByteArr(request, 1, received, bigEndian, false, false);
        if (!mSystem.MountedNode())
            return;
    }
    if (request.rawForm == CMessage::RawForm::None)
        return;  // nothing could be sent, which says nothing of the node
    CNode* node = mSystem.MountedNode();
    if (received == 0)
        node->setIProtocol(CNode::kProtocolQueries);
    else if (received > 0)
        DecodeHeader(std::span(bytes).first(std::min(bytes.size(), std::size_t(received))), bigEndian, header);
    else if (node->iProtocol() == CNode::kProtocolUnknown)
        node->setIProtocol(CNode::kProtocolImage);
}

void Flash::DecodeHeader(std::span<const std::uint8_t> bytes, bool bigEndian, HeaderRecord& header)
{
    const auto high = [bytes, bigEndian](std::size_t position) { return bytes[position - (bigEndian ? 1 : 0)]; };
    const auto low = [bytes, bigEndian](std::size_t position) { return bytes[position - (bigEndian ? 0 : 1)]; };
    for (const HeaderWord& word : kHeaderWords) {
        if (bytes.size() > word.position)
            header.*word.field = std::int16_t(high(word.position) << 8 | low(word.position));
    }
    for (const HeaderByte& byte : kHeaderBytes) {
        if (bytes.size() >= byte.position)
            header.*byte.field = QString::number(bytes[byte.position - 1]);
    }
    if (bytes.size() > kYearByte)
        header.year = YearText(high(kYearByte), low(kYearByte));
}

void Flash::ReadByBytes(HeaderRecord& header)
{
    const CNode* const node = mSystem.MountedNode();
    int misses = 0;
    std::optional<int> high;  // of the year
    for (const ByteAddress& byte : kByteAddresses) {
        CMessage request;
        request.Command = kByteRequest;
        request.State = 1;
        request.data = byte.address;
        const auto reply = mHandler.SendMessageGetReply(request, kValueReply, kByteTries, false, false);
        if (mSystem.MountedNode() != node)
            return;
        const bool isYear = byte.field == &HeaderRecord::year;
        if (!reply) {
            header.*byte.field = Unknown();
            if (++misses == kMostMisses)
                return;
        } else if (!isYear) {
            header.*byte.field = QString::number(reply->data & 0xFF);
        } else if (high) {
            header.year = YearText(*high, reply->data & 0xFF);
        } else if (byte.address == kYearHighAddress) {
            high = reply->data & 0xFF;
        }
    }
}

bool Flash::IsHeaderValid(const HeaderRecord& header)
{
    return std::all_of(std::begin(kShownFields), std::end(kShownFields),
                       [&header](TextField field) { return header.*field != Unknown(); });
}

}  // namespace fenrik
