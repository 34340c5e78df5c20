#pragma once

#include "platform/ComPorts.h"
#include "platform/SerialControl.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace fenrik {

/// What one try to open a port has shown.
enum class PortCondition : std::uint8_t {
    Absent,  ///< no such port, or one that can't be used
    Free,
    InUse,
};

/// By port number, 1 to 16; the first element stands for nothing.
using PortConditions = std::array<PortCondition, ComPorts::kLast + 1>;

/// A row of a list of ports.
struct PortRow {
    QString text;
    int number = 0;
};

/// Tries each port from 1 to 16 once, in order. `tryPort` opens and closes a port; it throws the Error of opening.
[[nodiscard]] PortConditions ScanPorts(const std::function<void(int number)>& tryPort);

/// One row for each port that is there.
[[nodiscard]] std::vector<PortRow> PortRows(const PortConditions& ports);

/// The row of the transceiver on USB, whose port is `number`.
[[nodiscard]] PortRow UsbTransceiverRow(const PortConditions& ports, int number);

/// Opens ports for a moment to see whether they can be had. The program's own port is left alone while it is open.
class PortProbe {
public:
    /// Both outlive the object.
    PortProbe(const ComPorts& ports, const SerialControl& own) : mPorts(ports), mOwn(own), mProbe(ports) {}

    /// Throws the Error of opening the port.
    void Try(int number);

private:
    const ComPorts& mPorts;
    const SerialControl& mOwn;
    SerialControl mProbe;
};

}  // namespace fenrik
