#pragma once

#include <QChar>

#include <cstdint>

/// The character set of the glyph sheets: the old PC's, with a picture for each code, the control codes included.
namespace fenrik::CodePage437 {

inline constexpr std::uint8_t kBlank = 32;
inline constexpr std::uint8_t kUnknown = '?';
inline constexpr std::uint8_t kDegree = 248;

/// Code of the glyph that shows `character`. Characters that the set lacks show as "?". Codes below 32, and 248, the
/// degree sign, are also taken as what they are: the rows of analog values write the degree sign by its code.
[[nodiscard]] std::uint8_t CodeOf(QChar character);

/// What the glyph shows; a blank for the three empty ones (0, 32, 255).
[[nodiscard]] QChar CharacterOf(std::uint8_t code);

}  // namespace fenrik::CodePage437
