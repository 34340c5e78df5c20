#include "app/LegacyOptions.h"

#include "app/ProgramHost.h"

namespace fenrik {

LegacyOptions::LegacyOptions(const Services& services, ProgramHost& program)
    : mServices(services), mProgram(program), mDialogs(mServices, *this)
{
}

void LegacyOptions::WriteSettings()
{
    mProgram.WriteSettings();
}

}  // namespace fenrik
