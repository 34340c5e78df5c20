#include "relay/RelayLog.h"

#include <array>
#include <ctime>

namespace fenrik {

namespace {

std::string TimeOfDay()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S ", &parts)};
}

}  // namespace

void RelayLog::Line(double now, std::string_view text)
{
    if (!mBudget.Has(now)) {
        ++mLeftOut;
        return;
    }
    mBudget.Spend(1);
    Always(text);
}

void RelayLog::Always(std::string_view text)
{
    TellLeftOut();
    // A disk that was full need not be now.
    mOut->clear();
    if (mStamp == Stamp::Time)
        *mOut << TimeOfDay();
    *mOut << text << std::endl;
}

void RelayLog::TellLeftOut()
{
    if (mLeftOut == 0)
        return;
    const auto count = mLeftOut;
    mLeftOut = 0;
    Always(std::to_string(count) + " lines left out");
}

}  // namespace fenrik
