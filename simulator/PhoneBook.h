#pragma once

#include <string_view>

namespace fenrik {

/// Whom a phone number reaches.
struct PhoneNumber {
    enum class Answer {
        Vehicle,    ///< a vehicle's modem module
        Coach,      ///< another vehicle's
        NoModule,   ///< a modem with nothing behind it
        Busy,       ///< the line is taken
        NoAnswer,   ///< it rings, and nobody answers
        NoCarrier,  ///< somebody answers who is no modem
    };

    std::string_view digits;
    Answer answer;
    std::string_view who;  ///< for people
};

/// The entry of these digits; null if there is none, and then the number reaches nobody.
[[nodiscard]] const PhoneNumber* FindPhoneNumber(std::string_view digits);

}  // namespace fenrik
