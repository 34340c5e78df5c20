#include "simulator/ModemModule.h"

#include "simulator/TrafficLog.h"

namespace fenrik {

namespace {

constexpr std::uint8_t kEscape = '\\';
constexpr char kUsualNote = 'n';

}  // namespace

void ModemModule::Answer()
{
    mPassesThrough = false;
    mEscape = false;
    mSinceNote = 0;
}

void ModemModule::Hear(std::uint8_t byte)
{
    if (mEscape) {
        mEscape = false;
        if (byte != kEscape)
            Obey(char(byte));
        else if (mPassesThrough)
            mHost.ToNetwork(kEscape);
    } else if (byte == kEscape) {
        mEscape = true;
    } else if (mPassesThrough) {
        mHost.ToNetwork(byte);
    }
}

void ModemModule::Obey(char command)
{
    mLog.Note(std::string("module hears \\") + command);
    if (mDeaf || !mHost.CallLasts(command))
        return;
    switch (command) {
    case 'v':
        mHost.ToCaller(std::string(kVersion) + "\r\n");
        break;
    case 'p':
        mHost.ToCaller("ACK\r\n");
        mPassesThrough = true;
        break;
    case 'P':
        mPassesThrough = false;
        break;
    case 'h':
        mHost.ModuleHangsUp();
        break;
    default:
        break;
    }
}

std::string ModemModule::Escape(std::span<const std::uint8_t> bytes)
{
    std::string escaped;
    for (const auto byte : bytes) {
        escaped += char(byte);
        if (byte == kEscape)
            escaped += char(byte);
        if (mNotesEvery > 0 && ++mSinceNote >= mNotesEvery) {
            mSinceNote = 0;
            escaped += {char(kEscape), kUsualNote};
        }
    }
    return escaped;
}

void ModemModule::SayNote(char note)
{
    if (mPassesThrough)
        mHost.ToCaller({char(kEscape), note});
}

}  // namespace fenrik
