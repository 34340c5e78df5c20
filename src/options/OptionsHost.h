#pragma once

namespace fenrik {

/// What the option windows ask of the main window that opened them.
class OptionsHost {
public:
    virtual ~OptionsHost() = default;

    /// Writes all settings into their store.
    virtual void WriteSettings() = 0;

    /// The number of nodes in the settings holds, unless a saved system knows better.
    virtual void ApplyNodesInSystem() = 0;

    /// The options of the message list's data column have changed.
    virtual void ShowHexData() = 0;

    /// The options of the category list have changed.
    virtual void ShowCategories() = 0;
};

}  // namespace fenrik
