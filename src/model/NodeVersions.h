#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace fenrik {

class CSystem;
struct CMessage;

/// The versions of the mounted node's software and chips. The node is asked, and what it says of its operating
/// software stands in its object.
///
///   command  state  extended  data          reply
///   937      0      0                       950, data = version of the operating software
///   937      0      1                       950, extended 1, data = beta version or 0
///   937      1      0         0 PIC,        950, state 1, data = version of the chip
///                             1 FPGA
///
/// A version has its first number in the high byte.
class NodeVersions {
public:
    static constexpr int kPic = 0;
    static constexpr int kFpga = 1;

    explicit NodeVersions(CSystem& system) : mSystem(system) {}

    /// "1.3", or "??.??" if it can't be had. Without `force` the node is asked only while its version is not known.
    QString GetEmbeddedVersion(bool force);

    /// Version of a peripheral chip, kPic or kFpga: "2.5"; "66" for one below 1.0; "?" if it can't be had.
    QString GetPeriphICversion(int chip);

    /// Beta version, written like that of a chip; empty if there is none.
    QString GetBetaVersion();

private:
    std::optional<CMessage> Ask(int state, int extended, int data);
    void ReadOperatingSoftware();

    CSystem& mSystem;
};

}  // namespace fenrik
