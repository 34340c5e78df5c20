#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <csignal>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct Named {
    const char* name;
    int signal;

    friend void PrintTo(const Named& named, std::ostream* out) { *out << named.name; }
};

class EachTerminationSignal : public testing::TestWithParam<Named> {
protected:
    // The tests' own caller may have them ignored.
    EachTerminationSignal() { std::signal(GetParam().signal, SIG_DFL); }
};

TEST_P(EachTerminationSignal, IsToldFromTheEventLoopAndDoesNotEndTheProcess)
{
    const TerminationSignals signals;
    QSignalSpy told(&signals, &TerminationSignals::Requested);
    std::raise(GetParam().signal);
    EXPECT_EQ(told.count(), 0);
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(told.count(), 1);
}

TEST_P(EachTerminationSignal, EndsTheProcessAtOnceWhenItComesTwice)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            const TerminationSignals signals;
            std::raise(GetParam().signal);
            std::raise(GetParam().signal);
        },
        testing::KilledBySignal(GetParam().signal), "");
}

TEST_P(EachTerminationSignal, HasItsDefaultEffectAgainWhenTheObjectIsGone)
{
    {
        const TerminationSignals signals;
    }
    const auto effect = std::signal(GetParam().signal, SIG_DFL);
    EXPECT_EQ(effect, SIG_DFL);
}

TEST_P(EachTerminationSignal, StaysIgnoredIfItWas)
{
    std::signal(GetParam().signal, SIG_IGN);
    {
        const TerminationSignals signals;
        QSignalSpy told(&signals, &TerminationSignals::Requested);
        std::raise(GetParam().signal);
        QCoreApplication::processEvents();
        EXPECT_EQ(told.count(), 0);
    }
    const auto effect = std::signal(GetParam().signal, SIG_DFL);
    EXPECT_EQ(effect, SIG_IGN);
}

INSTANTIATE_TEST_SUITE_P(Platform, EachTerminationSignal,
                         testing::Values(Named{"Terminate", SIGTERM}, Named{"Interrupt", SIGINT},
                                         Named{"HangUp", SIGHUP}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
