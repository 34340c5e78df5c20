#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// How an input or an output is called on the screen: "3 Pin F (Wiper)".
namespace PointName {
/// `limit` is about the length that the name may take; 0 stands for 96, and less than 10 becomes 10, also in the
/// caller's variable. A long name is cut and ends in ".".
[[nodiscard]] QString DisplayName(int number, const QString& pin, const QString& name, std::int16_t& limit);

/// "O0302" for level 2 of output 3; level 0 is the point itself. Inputs have keys of the same letter.
[[nodiscard]] QString Key(int number, int level = 0);

/// The two numbers of a key; 0 for a text that is none.
[[nodiscard]] int NumberOf(const QString& key);
[[nodiscard]] int LevelOf(const QString& key);
}  // namespace PointName

}  // namespace fenrik
