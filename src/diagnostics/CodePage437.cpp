#include "diagnostics/CodePage437.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace fenrik::CodePage437 {

namespace {

constexpr std::u16string_view kSymbols = u" ☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼";

constexpr int kFirstUpper = 127;
constexpr std::u16string_view kUpper = u"⌂"
                                       u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
                                       u"áíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
                                       u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
                                       u"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■ ";

static_assert(kSymbols.size() == 32 && kUpper.size() == 129);

struct Pair {
    char16_t character;
    std::uint8_t code;
};

constexpr bool ByCharacter(Pair a, Pair b)
{
    return a.character < b.character;
}

/// The characters that are not their own code, in the order of Unicode.
constexpr auto kCodes = [] {
    std::array<Pair, kSymbols.size() - 1 + kUpper.size() - 1> pairs{};
    std::size_t next = 0;
    for (std::size_t code = 1; code < kSymbols.size(); ++code)
        pairs[next++] = {kSymbols[code], std::uint8_t(code)};
    for (std::size_t i = 0; i + 1 < kUpper.size(); ++i)
        pairs[next++] = {kUpper[i], std::uint8_t(kFirstUpper + i)};
    std::sort(pairs.begin(), pairs.end(), ByCharacter);
    return pairs;
}();

}  // namespace

std::uint8_t CodeOf(QChar character)
{
    const char16_t wanted = character.unicode();
    if (wanted < kFirstUpper || wanted == kDegree)
        return std::uint8_t(wanted);
    if (wanted == QChar::Nbsp)
        return kBlank;
    const auto* const at = std::lower_bound(kCodes.begin(), kCodes.end(), Pair{wanted, 0}, ByCharacter);
    return at != kCodes.end() && at->character == wanted ? at->code : kUnknown;
}

QChar CharacterOf(std::uint8_t code)
{
    if (code < kSymbols.size())
        return kSymbols[code];
    return code < kFirstUpper ? QChar(code) : QChar(kUpper[std::size_t(code - kFirstUpper)]);
}

}  // namespace fenrik::CodePage437
