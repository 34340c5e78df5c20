#pragma once

namespace fenrik {

/// What a main window asks of the program around it.
class ProgramHost {
public:
    virtual ~ProgramHost() = default;

    /// The system or the market has changed: the command catalogue and the category list are filled anew.
    virtual void LoadCommands() = 0;

    /// The options of the category list have changed: it is filled anew.
    virtual void PopulatecboCategoryList() = 0;

    /// Opens the folder of the message logs in the desktop's file explorer.
    virtual void ExploreDiagPath() = 0;

    /// Writes all settings into their store.
    virtual void WriteSettings() = 0;

    /// Writes the settings and ends the program; the last thing that a window does.
    virtual void SaveAndEnd() = 0;
};

}  // namespace fenrik
