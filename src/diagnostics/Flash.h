#pragma once

#include "diagnostics/NodeViewHost.h"
#include "model/NodeVersions.h"

#include <QHash>
#include <QStringList>

#include <cstdint>
#include <span>

namespace fenrik {

class CMsgHandler;
class CNode;
class CSystem;
class ErrorReporter;
class Graphics;
struct HeaderRecord;

/// The view of what the mounted node carries in its flash: its place in the system, version and date of its
/// configuration, and the versions of its software and chips. A node that was read in full is not asked again.
///
/// Newer nodes give the whole header at once, older ones byte by byte:
///
///   command  state  extended  data     reply
///   940      0      0         0        903 and frames of 950: a multi-frame reply, the header
///   923      1      0         address  950, the byte in the low half of its data
///
///   byte of the header  address of the byte  value
///   1-6                                      three words, carried only
///   7                                        carried only
///                       2                    number of the node
///   8                   3                    number of nodes of the design
///   9                                        fourth number of the design's version, carried only
///   10                  9                    third number
///   11                  8                    second number
///   12                  7                    first number
///   13                  11                   second number of the date
///   14                  10                   first number
///   15-16               12-13                year; at an address, the high byte first
///
/// A word of the header has its high byte first if the announcing frame says so.
class Flash {
public:
    /// All outlive it.
    Flash(CSystem& system, CMsgHandler& handler, Graphics& graphics, ErrorReporter& errors, NodeViewHost& host);

    /// The view was opened, or is drawn anew. Does nothing while it is reading.
    void DisplayFlashInfo();
    void DisplayNotMounted();

    /// Reads the header from the mounted node; what can't be had is "??". Notes in the node's `iProtocol` which of
    /// the two ways of asking works.
    void GetHeaderInfo(HeaderRecord& header);

    /// Every field that is shown was read.
    [[nodiscard]] static bool IsHeaderValid(const HeaderRecord& header);

    /// Takes the bytes of a whole header; those that are missing leave their fields alone.
    static void DecodeHeader(std::span<const std::uint8_t> bytes, bool bigEndian, HeaderRecord& header);

private:
    struct Versions {
        QString os = QStringLiteral("??.??");
        QString beta;
        QString pic;
        QString fpga;
    };

    [[nodiscard]] bool ShowsMountedNode() const;
    void Recall(const CNode& node, HeaderRecord& header, Versions& versions);
    void Read(HeaderRecord& header, Versions& versions);
    void ReadVersions(Versions& versions);
    [[nodiscard]] bool ReadChips(Versions& versions);
    [[nodiscard]] QString EmbeddedVersion(bool force);
    [[nodiscard]] QString ChipVersion(int chip);
    void ReadWhole(HeaderRecord& header);
    void ReadByBytes(HeaderRecord& header);
    void DrawLines(const CNode& node, const HeaderRecord& header, const Versions& versions);

    CSystem& mSystem;
    CMsgHandler& mHandler;
    Graphics& mGraphics;
    ErrorReporter& mErrors;
    NodeViewHost& mHost;
    NodeVersions mVersions;
    bool mReading = false;
    QHash<int, QString> mPicVersions;  // by node number, of the models whose node does not keep it
};

}  // namespace fenrik
