#pragma once

#include <span>
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

/// The numbers that exist; all others reach nobody.
[[nodiscard]] std::span<const PhoneNumber> PhoneBook();

/// Null if there is no such number.
[[nodiscard]] const PhoneNumber* FindPhoneNumber(std::string_view digits);

}  // namespace fenrik
