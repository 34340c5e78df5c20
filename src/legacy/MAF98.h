#pragma once

#include "legacy/MessageTable98.h"

#include <QString>

#include <array>
#include <cstdint>
#include <string_view>

namespace fenrik {

class CharacterFace;
class Graphics;
struct Settings;

/// Draws the two panels of the older network's window. Places are in pixels from a face's top left corner; lines stand
/// 23 pixels apart and characters 18.
///
/// On the narrow panel, the link's health:
///
///   Y 4    *123456*  token bar between the stars of the missed mark
///   Y 27   MT 00000  missed tokens
///   Y 73   <- BC ->  collision mark
///   Y 96   BC 00000  bus collisions
///   Y 142  LS3   ON  load shed
class MAF98 {
public:
    static constexpr int kNames = 25;  ///< rows of analog values that keep their names

    /// All outlive it. `analog` draws on the wide face.
    MAF98(CharacterFace& misc, Graphics& analog, const MessageTable98& messages);

    /// The six nodes, the one that holds `token` lit; none with 0. Costs next to nothing: every second byte of the line
    /// is a token.
    void TokenBar(int token);

    void MissedMark(bool on);
    void MissedCount(int count);
    void CollisionMark(bool on, std::string_view text = {});
    void CollisionCount(int count);
    void LoadShed(const QString& name);

    /// The panel as it is before anything was heard: dark bar and marks, no counts.
    void ClearMisc();
    void ClearAnalog();

    /// A row for each name, in the order in which they were first heard. A name more than there are rows is drawn
    /// below the last one and not kept.
    void AnalogValue(std::uint8_t message, const QString& name, int value);

    /// Forgets the names. The face stays as it is.
    void ResetAnalogNames();

    void SystemInformation(const Settings& settings);

    /// One decimal, halves away from zero, at least five characters.
    [[nodiscard]] static QString ValueText(int value, std::int32_t divisor);

private:
    [[nodiscard]] int RowOf(const QString& name);
    void PutMisc(std::string_view text, int y, bool lit);
    void PutCount(const char* label, int count, int y);
    void PutDigit(int node, bool lit);
    void PutLine(const QString& text, int y);

    CharacterFace& mMisc;
    Graphics& mAnalog;
    const MessageTable98& mMessages;
    std::array<QString, kNames> mNames;
    int mToken = 0;  // whose digit is lit
};

}  // namespace fenrik
