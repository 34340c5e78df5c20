#include "app/messages/MessageListModel.h"

#include "Messages.h"
#include "support/Printers.h"

#include <QAbstractItemModelTester>
#include <QPixmap>
#include <QSignalSpy>
#include <gmock/gmock.h>

#include <random>

namespace fenrik {
namespace {

using testing::ElementsAre;
using Model = MessageListModel;

class MessageListModelTest : public testing::Test {
protected:
    void Add(const CMessage& message, const QString& name = QStringLiteral("Lamp"), int count = 0)
    {
        model.Add(message, model.Intern(name, QStringLiteral("On")), std::int16_t(count));
    }

    [[nodiscard]] QVariant Cell(int row, int column, int role = Qt::DisplayRole) const
    {
        return model.index(row, column).data(role);
    }

    [[nodiscard]] std::vector<std::string> Texts(int row) const
    {
        std::vector<std::string> texts;
        for (int column = 0; column < model.columnCount(); ++column)
            texts.push_back(Cell(row, column).toString().toStdString());
        return texts;
    }

    /// "top,left-bottom,right" of each dataChanged.
    [[nodiscard]] static std::vector<std::string> Ranges(const QSignalSpy& spy)
    {
        std::vector<std::string> ranges;
        for (const QVariantList& call : spy) {
            const auto from = call[0].value<QModelIndex>();
            const auto to = call[1].value<QModelIndex>();
            ranges.push_back(QStringLiteral("%1,%2-%3,%4")
                                 .arg(from.row())
                                 .arg(from.column())
                                 .arg(to.row())
                                 .arg(to.column())
                                 .toStdString());
        }
        return ranges;
    }

    Model model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(MessageListModelTest, HasTheHeadersOfTheList)
{
    std::vector<std::string> headers;
    for (int column = 0; column < model.columnCount(); ++column)
        headers.push_back(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString());
    EXPECT_THAT(headers, ElementsAre("Message", "State", "Three-Way", "Data", "CS", "Raw", "Time Stamp", "Count"));
}

TEST_F(MessageListModelTest, ShowsAReceivedMessage)
{
    Add(Received(901, 3), QStringLiteral("Ping"), 17);
    model.Flush();
    EXPECT_THAT(Texts(0), ElementsAre("Ping", "Off", "False", "3", "197", "0.AE.14.0.3.C5", "9:05:07.25", "17"));
}

TEST_F(MessageListModelTest, ShowsASentMessageInItsOwnRawForm)
{
    Add(Sent(901, 3), QStringLiteral("Ping"), 18);
    model.Flush();
    EXPECT_THAT(Texts(0), ElementsAre("Ping", "Off", "False", "3", "197", "00.AE.14.00.03.C5", "9:05:07.25", "18"));
}

TEST_F(MessageListModelTest, ShowsASubCommandUnderItsNumberAndItsCarrierInRaw)
{
    Add(Received(1024 + 5, 0x0507, true, true), QStringLiteral("Sub"));
    model.Flush();
    EXPECT_THAT(Texts(0), ElementsAre("Sub", "On", "True", "1287", "94", "0.AF.A3.5.7.5E", "9:05:07.25", "0"));
    EXPECT_EQ(Cell(0, 0, Model::TagRole), 1029);
}

TEST_F(MessageListModelTest, ShowsNeitherRawNorTimeOfAMessageThatNeverTravelled)
{
    CMessage message;
    message.Command = 12;
    message.State = 255;
    message.extended = 2;
    message.data = -1;
    Add(message, QStringLiteral("Lamp"), -1);
    model.Flush();
    EXPECT_THAT(Texts(0), ElementsAre("Lamp", "On", "True", "-1", "0", "", "", "-1"));
}

TEST_F(MessageListModelTest, ShowsDataInHexadecimalWhileHexDataIsOn)
{
    Add(Received(12, 31));
    Add(Received(12, 0));
    Add(Received(12, 0xABCD));
    model.Flush();
    QSignalSpy changed(&model, &Model::dataChanged);

    model.SetHexData(true);
    EXPECT_EQ(Cell(0, Model::Data), QStringLiteral("0x1F"));
    EXPECT_EQ(Cell(1, Model::Data), QStringLiteral("0x0"));
    EXPECT_EQ(Cell(2, Model::Data), QStringLiteral("0xABCD"));
    model.SetHexData(true);
    EXPECT_THAT(Ranges(changed), ElementsAre("0,3-2,3"));

    model.SetHexData(false);
    EXPECT_EQ(Cell(0, Model::Data), QStringLiteral("31"));
    EXPECT_THAT(Ranges(changed), ElementsAre("0,3-2,3", "0,3-2,3"));
}

TEST_F(MessageListModelTest, TogglesHexDataWithoutLines)
{
    QSignalSpy changed(&model, &Model::dataChanged);
    model.SetHexData(true);
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_TRUE(model.HexData());
}

TEST_F(MessageListModelTest, GivesTagIconAndSpokenText)
{
    Add(Received(12, 31, true));
    model.Flush();
    EXPECT_EQ(Cell(0, Model::Message, Model::TagRole), 12);
    EXPECT_EQ(Cell(0, Model::Count, Model::TagRole), 12);
    EXPECT_EQ(Cell(0, Model::Message, Model::IconRole), QStringLiteral("On"));
    EXPECT_FALSE(Cell(0, Model::Message, Model::LineKeyRole).isValid());
    EXPECT_EQ(Cell(0, Model::Message, Qt::AccessibleTextRole), QStringLiteral("Lamp"));
    EXPECT_EQ(Cell(0, Model::State, Qt::AccessibleTextRole), QStringLiteral("State On"));
    EXPECT_FALSE(Cell(0, Model::State, Qt::DecorationRole).isValid());
    EXPECT_EQ(int(Model::TagRole), int(Qt::UserRole));
    EXPECT_EQ(int(Model::IconRole), int(Qt::UserRole) + 1);
    EXPECT_EQ(int(Model::LineKeyRole), int(Qt::UserRole) + 2);
}

TEST_F(MessageListModelTest, AMissingPictureIsANullIcon)
{
    model.Add(Received(12), model.Intern(QStringLiteral("Lamp"), QStringLiteral("no such icon")), 0);
    model.Flush();
    for (int again = 0; again < 2; ++again)
        EXPECT_TRUE(Cell(0, Model::Message, Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(MessageListModelTest, AnnouncesAllNewLinesAtOnce)
{
    QSignalSpy inserted(&model, &Model::rowsInserted);
    for (int i = 0; i < 1000; ++i)
        Add(Received(12, i));
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.NewestRow(), 999);

    model.Flush();
    EXPECT_EQ(model.rowCount(), 1000);
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 0);
    EXPECT_EQ(inserted[0][2].toInt(), 999);

    model.Flush();
    EXPECT_EQ(inserted.size(), 1);
}

TEST_F(MessageListModelTest, AsksForAFlushOncePerBatch)
{
    QSignalSpy due(&model, &Model::FlushDue);
    Add(Received(12));
    Add(Received(12));
    EXPECT_EQ(due.size(), 1);
    EXPECT_TRUE(model.HasUnseen());

    model.Flush();
    EXPECT_FALSE(model.HasUnseen());
    Add(Received(12));
    EXPECT_EQ(due.size(), 2);

    model.Clear();
    EXPECT_FALSE(model.HasUnseen());
    Add(Received(12));
    EXPECT_EQ(due.size(), 3);
}

TEST_F(MessageListModelTest, IsNeverReset)
{
    QSignalSpy reset(&model, &Model::modelReset);
    QSignalSpy removed(&model, &Model::rowsRemoved);
    Add(Received(12));
    model.Flush();
    Add(Received(13));
    model.Clear();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.NewestRow(), -1);
    EXPECT_EQ(removed.size(), 1);

    Add(Received(14));
    model.Clear();
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(MessageListModelTest, NamesOutliveClear)
{
    const auto name = model.Intern(QStringLiteral("Horn"), QStringLiteral("Off"));
    model.Clear();
    model.Add(Received(12), name, 0);
    model.Flush();
    EXPECT_EQ(Cell(0, Model::Message), QStringLiteral("Horn"));
    EXPECT_EQ(model.Intern(QStringLiteral("Horn"), QStringLiteral("Off")), name);
}

TEST_F(MessageListModelTest, CompactAnnouncesOnlyChangedCells)
{
    model.SetCompactList(true);
    for (int command = 10; command < 15; ++command)
        Add(Received(command));
    model.Flush();
    QSignalSpy changed(&model, &Model::dataChanged);
    QSignalSpy inserted(&model, &Model::rowsInserted);

    for (const int command : {12, 11})
        Add(Received(command, 0, true), QStringLiteral("Lamp"), 1);
    EXPECT_TRUE(changed.isEmpty());
    model.Flush();
    EXPECT_THAT(Ranges(changed), ElementsAre("1,1-2,1", "1,4-2,5", "1,7-2,7"));
    EXPECT_TRUE(inserted.isEmpty());
    EXPECT_EQ(model.NewestRow(), 1);
    EXPECT_EQ(Cell(1, Model::Message, Model::LineKeyRole), QStringLiteral("11VMLamp"));
}

TEST_F(MessageListModelTest, CompactKeepsOneLineForEachDataOf900To999)
{
    model.SetCompactList(true);
    for (const int data : {3, 4, 3})
        Add(Received(902, data), QStringLiteral("Ping reply"));
    model.Flush();
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(Cell(0, 0, Model::LineKeyRole), QStringLiteral("902D3"));
    EXPECT_EQ(Cell(1, 0, Model::LineKeyRole), QStringLiteral("902D4"));
}

TEST_F(MessageListModelTest, TurningCompactOnEmptiesIt)
{
    Add(Received(12));
    Add(Received(12));
    model.Flush();
    Add(Received(12));
    model.SetCompactList(true);
    EXPECT_EQ(model.rowCount(), 0);
    model.Flush();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(MessageListModelTest, TurningCompactOffKeepsItsLines)
{
    model.SetCompactList(true);
    Add(Received(12, 1));
    model.Flush();
    model.SetCompactList(false);
    Add(Received(12, 2));
    model.Flush();
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(Cell(0, 0, Model::LineKeyRole), QStringLiteral("12VMLamp"));
    EXPECT_FALSE(Cell(1, 0, Model::LineKeyRole).isValid());
}

TEST_F(MessageListModelTest, HoldsUnderRandomUse)
{
    std::mt19937 random(7);
    const auto upTo = [&random](int n) { return int(random() % unsigned(n)); };
    int expected = 0;
    for (int step = 0; step < 3000; ++step) {
        const int what = upTo(100);
        if (what < 80)
            Add(Received(1 + upTo(1279), upTo(3), upTo(2) != 0, upTo(2) != 0), QString::number(upTo(5)), upTo(9));
        else if (what < 95)
            model.Flush();
        else if (what < 97)
            model.SetHexData(upTo(2) != 0);
        else if (what < 98)
            model.Clear();
        else
            model.SetCompactList(upTo(2) != 0);
        expected = std::max(expected, model.rowCount());
        ASSERT_LT(model.NewestRow(), model.rowCount() + 100);
    }
    EXPECT_GT(expected, 50);
}

}  // namespace
}  // namespace fenrik
