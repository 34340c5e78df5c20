#pragma once

#include "app/OptionDialogs.h"
#include "app/Services.h"
#include "options/OptionsHost.h"

namespace fenrik {

class ProgramHost;

/// The windows of options over the window of the older network, which asks the settings itself for what they change.
class LegacyOptions : private OptionsHost {
public:
    LegacyOptions(const Services& services, ProgramHost& program);

    [[nodiscard]] OptionDialogs& Dialogs() { return mDialogs; }

private:
    void WriteSettings() override;
    void ApplyNodesInSystem() override {}
    void ShowHexData() override {}
    void ShowCategories() override {}

    const Services mServices;
    ProgramHost& mProgram;
    OptionDialogs mDialogs;
};

}  // namespace fenrik
