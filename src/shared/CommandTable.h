#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace fenrik {

/// What the catalogue knows of one command number.
struct CommandEntry {
    QString Name;
    QString Category;               ///< "<Undefined Messages>" for a number that the catalogue leaves undefined
    std::int16_t CategoryRank = 0;  ///< order of the category; 99 and above marks internal categories
    std::int32_t LastValue = 0;     ///< last `data` of an analog command
};

/// The names, counters and analog flags of all commands, by number. Filled by LoadCommands from a catalogue
/// file; one instance, owned by MMain.
///
/// Numbers 1024 to 1279 are the sub-commands of 1000 and exist only inside the tool.
class CommandTable {
public:
    static constexpr int kSize = 1280;
    static constexpr int kFirstSubCommand = 1024;
    static constexpr int kSubCommandCarrier = 1000;
    static constexpr const char* kUndefinedCategory = "<Undefined Messages>";

    CommandTable() { Clear(); }

    /// All numbers undefined, no analog command. Counters and last values stay: the traffic was heard.
    void Clear();

    [[nodiscard]] static bool Contains(int command) { return command >= 0 && command < kSize; }

    /// Entry of `command`; throws Error 9 (subscript out of range) outside 0 to 1279.
    [[nodiscard]] CommandEntry& operator[](int command);
    [[nodiscard]] const CommandEntry& operator[](int command) const;

    [[nodiscard]] std::int16_t Count(int command) const { return Contains(command) ? mCounts[command] : 0; }

    /// One more message of that number was sent or received. After 32767 the counter restarts at 0; a number
    /// outside the table is not counted.
    void CountUp(int command)
    {
        if (Contains(command))
            mCounts[command] = mCounts[command] == INT16_MAX ? 0 : mCounts[command] + 1;
    }

    [[nodiscard]] bool AnalogCommand(int command) const { return Contains(command) && mAnalog[command]; }
    void SetAnalogCommand(int command, bool analog);

    /// The first number from 1 whose Name is `name`; 1280 if there is none.
    [[nodiscard]] int GetCommandNumber(const QString& name) const;

    /// Name of `number`, "Unknown" outside 1 to 1279.
    [[nodiscard]] QString FriendlyName(int number) const;

    /// Grows each time that names may have changed, so that a holder of names knows that its copy is stale.
    [[nodiscard]] int Generation() const { return mGeneration; }
    void NamesChanged() { ++mGeneration; }

private:
    std::array<CommandEntry, kSize> mEntries;
    // Apart from the entries, so that counting a frame touches two bytes and no text.
    std::array<std::int16_t, kSize> mCounts{};
    std::array<bool, kSize> mAnalog{};
    int mGeneration = 0;
};

}  // namespace fenrik
