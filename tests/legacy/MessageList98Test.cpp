#include "legacy/LegacyFixture.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QSignalSpy>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = MessageRecord98::Kind;

class List98 : public testing::Test {
protected:
    void AddCommand(int data) { list.Add({1.5F, data, 0, 3, Kind::Command}, "Horn", "Body"); }

    MessageList98 list;
    QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(List98, TheColumnsAreThoseOfTheLog)
{
    QStringList titles;
    for (int column = 0; column < list.columnCount(); ++column)
        titles.append(list.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    EXPECT_EQ(titles, QStringList({"Node", "Name", "Data", "Description", "Time Stamp"}));
}

TEST_F(List98, EachKindHasItsWordItsIconAndItsColumns)
{
    AddCommand(30);
    list.Add({32707.25F, 102, 0, 0, Kind::Error}, "Missed Token", "");
    list.Add({0, 0, 0, 0, Kind::Info}, "Event 7 occured.", "");
    EXPECT_THAT(LinesOf(list), ElementsAre("3|Horn|30|Body|1.5|Command", "Error|Missed Token|102||32707.25|Error",
                                           "Info|Event 7 occured.||||Info"));
    for (int row = 0; row < 3; ++row) {
        EXPECT_FALSE(list.index(row, 0).data(Qt::DecorationRole).value<QIcon>().isNull()) << row;
        EXPECT_FALSE(list.index(row, 1).data(Qt::DecorationRole).isValid()) << row;
    }
}

TEST_F(List98, LinesAreAnnouncedInBatches)
{
    QSignalSpy due(&list, &MessageLines::FlushDue);
    QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);
    AddCommand(1);
    AddCommand(2);
    AddCommand(3);
    EXPECT_EQ(due.count(), 1);
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_EQ(list.NewestRow(), 2);
    list.Flush();
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(inserted.count(), 1);
    list.Flush();
    EXPECT_EQ(inserted.count(), 1);
    AddCommand(4);
    EXPECT_EQ(due.count(), 2);
}

TEST_F(List98, ClearingTakesTheUnannouncedToo)
{
    AddCommand(1);
    list.Flush();
    AddCommand(2);
    list.Clear();
    EXPECT_FALSE(list.HasUnseen());
    EXPECT_EQ(list.NewestRow(), -1);
    list.Flush();
    EXPECT_THAT(LinesOf(list), IsEmpty());
    AddCommand(5);
    EXPECT_THAT(LinesOf(list), ElementsAre("3|Horn|5|Body|1.5|Command"));
}

TEST_F(List98, AScreenReaderIsToldTheColumns)
{
    AddCommand(30);
    list.Flush();
    EXPECT_EQ(list.index(0, 2).data(Qt::AccessibleTextRole), "Data 30");
}

TEST_F(List98, ManyLinesKeepTheirTexts)
{
    for (int i = 0; i < 100'000; ++i)
        list.Add({float(i % 86400), i, 0, std::int16_t(i % 6 + 1), Kind::Command}, QString::number(i % 300), "Body");
    list.Flush();
    ASSERT_EQ(list.rowCount(), 100'000);
    EXPECT_EQ(list.index(99'999, 1).data(), QString::number(99'999 % 300));
    EXPECT_EQ(list.index(99'999, 2).data(), "99999");
}

}  // namespace
}  // namespace fenrik
