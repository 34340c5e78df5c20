#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace fenrik {

/// What the system database says of one message number of the older network.
struct MessageEntry98 {
    /// What the description makes of the message.
    enum class Kind : std::uint8_t {
        Plain,
        Analog,    ///< "ANALOG", in any case: the next byte is its value
        LoadShed,  ///< "LOADSHED": the name tells level and state
    };

    MessageEntry98() = default;
    MessageEntry98(const QString& name, const QString& description, bool ignore, std::int32_t divisor);

    QString Name;
    QString Description;
    bool Ignore = false;       ///< neither listed nor logged
    std::int32_t Divisor = 1;  ///< of an analog value; never 0
    Kind kind = Kind::Plain;
};

/// By message number. A number that the database does not have stands there without a name.
using MessageTable98 = std::array<MessageEntry98, 256>;

}  // namespace fenrik
