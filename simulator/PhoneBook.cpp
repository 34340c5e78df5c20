#include "simulator/PhoneBook.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

using Answer = PhoneNumber::Answer;

constexpr PhoneNumber kNumbers[] = {
    {"5550100", Answer::Vehicle, "the vehicle"}, {"5550101", Answer::Coach, "a coach of three nodes"},
    {"5550102", Answer::Busy, "busy"},           {"5550103", Answer::NoAnswer, "nobody answers"},
    {"5550104", Answer::NoCarrier, "a person"},  {"5550105", Answer::NoModule, "a modem without a module"},
};

}  // namespace

const PhoneNumber* FindPhoneNumber(std::string_view digits)
{
    const auto* row = std::ranges::find(kNumbers, digits, &PhoneNumber::digits);
    return row == std::end(kNumbers) ? nullptr : row;
}

}  // namespace fenrik
