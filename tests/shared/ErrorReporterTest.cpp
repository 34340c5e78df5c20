#include "shared/ErrorReporter.h"

#include "platform/Error.h"
#include "support/ErrorRecorder.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class GuardedTest : public testing::Test {
protected:
    ErrorRecorder errors;
};

TEST_F(GuardedTest, NothingThrownIsNothingReported)
{
    bool ran = false;
    EXPECT_TRUE(Guarded(errors, "MMain:Main", [&ran] { ran = true; }));
    EXPECT_TRUE(ran);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(GuardedTest, AnErrorIsReportedWithItsNumberTextAndPlace)
{
    EXPECT_FALSE(Guarded(errors, "MMain:Main", [] { throw Error(13, QStringLiteral("Type mismatch")); }));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 13);
    EXPECT_EQ(errors.reports[0].description, QStringLiteral("Type mismatch"));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("MMain:Main"));
}

TEST_F(GuardedTest, WhatTheLibraryThrowsIsReportedToo)
{
    EXPECT_FALSE(Guarded(errors, "here", [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Guarded(errors, "there", [] { throw std::out_of_range("no such place"); }));
    ASSERT_THAT(errors.reports, SizeIs(2));
    EXPECT_EQ(errors.reports[0].number, 7);
    EXPECT_EQ(errors.reports[1].number, 5);
    EXPECT_EQ(errors.reports[1].description, QStringLiteral("no such place"));
}

TEST_F(GuardedTest, AProcedureEndsWhereItFailsWithTheStateAsItStands)
{
    int state = 0;
    (void)Guarded(errors, "here", [&state] {
        state = 1;
        Error failure(5, QString());
        if (state == 1)
            throw failure;
        state = 2;
    });
    EXPECT_EQ(state, 1);
}

TEST_F(GuardedTest, ACatchBlockMayReportByItself)
{
    try {
        throw Error(53, QStringLiteral("File not found"));
    } catch (const std::exception&) {
        ReportCurrentException(errors, "CMsgHandler:ReceiveMsgByte");
    }
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 53);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("CMsgHandler:ReceiveMsgByte"));
}

}  // namespace
}  // namespace fenrik
