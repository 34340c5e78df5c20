#include "WindowFixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A connected window whose list is empty.
class WindowMessagesTest : public WindowTest {
protected:
    void SetUp() override
    {
        StartAndConnect("AutoDetect=False\n");
        vehicle.heard.clear();
    }

    /// Sends a frame and waits for its line.
    void Arrive(const Frame& frame)
    {
        const auto before = Lines().size();
        vehicle.Send(frame);
        ASSERT_TRUE(Until([this, before] { return Lines().size() > before; }));
    }

    void DoubleClickFirstLine()
    {
        const MessageListView& list = Window().MessageList();
        const QPoint place = list.RowRect(0).topLeft() + QPoint(20, list.RowHeight() / 2);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    }

    [[nodiscard]] QString Cell(int row, int column) { return Window().Messages().index(row, column).data().toString(); }

    [[nodiscard]] bool Hears(const std::string& frame)
    {
        return Until([this, frame] {
            return std::find(vehicle.heard.begin(), vehicle.heard.end(), frame) != vehicle.heard.end();
        });
    }
};

TEST_F(WindowMessagesTest, ADoubleClickTakesALineOverForSending)
{
    Arrive({12, false, true, 31});
    Arrive({1, true, false, 0});
    DoubleClickFirstLine();
    EXPECT_EQ(Control<QComboBox>("CboCommand").currentText(), "Rear Fog Lamps");
    EXPECT_EQ(Control<QPushButton>("cmdState").text(), "Off");
    EXPECT_EQ(Control<QPushButton>("cmdExtended").text(), "True");
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), "31");

    QTest::mouseClick(&Control<QPushButton>("cmdSend"), Qt::LeftButton);
    EXPECT_TRUE(Hears("12 0 31"));
    EXPECT_EQ(Lines(), QStringList({"Rear Fog Lamps", "Head Lamps Low Beam", "Rear Fog Lamps"}));
    EXPECT_EQ(Window().MessageList().SelectedRow(), 2) << "the list's end is selected after sending";
}

TEST_F(WindowMessagesTest, ALineOfAnUnlistedCategoryIsNotTakenOver)
{
    Arrive({27, false, false, 2});
    QTest::keyClick(&Control<QLineEdit>("TxtData"), Qt::Key_5);
    const QString before = Control<QLineEdit>("TxtData").text();
    DoubleClickFirstLine();
    EXPECT_EQ(Msg(), "\"<Undefined message   27>\" is in a category that is not listed.");
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), before);
}

TEST_F(WindowMessagesTest, EnterInTheDataSends)
{
    auto& data = Control<QLineEdit>("TxtData");
    data.selectAll();
    QTest::keyClicks(&data, "0x1f");
    QTest::keyClick(&data, Qt::Key_Return);
    EXPECT_TRUE(Hears("1 1 31"));
}

TEST_F(WindowMessagesTest, TheListsMenuShowsTheOptionsAsTheyAre)
{
    QMenu& menu = *Window().Menus().Menu("mnuListView");
    Q_EMIT Window().MessageList().customContextMenuRequested(QPoint(5, 5));
    EXPECT_TRUE(menu.isVisible());
    for (const char* entry : {"mnuListViewShowAll", "mnuListViewCompactList", "mnuListViewHexData"})
        EXPECT_FALSE(Entry(entry).isChecked()) << entry;
    menu.close();
    Entry("mnuListViewHexData").trigger();
    Q_EMIT Window().MessageList().customContextMenuRequested(QPoint(5, 5));
    EXPECT_TRUE(Entry("mnuListViewHexData").isChecked());
    menu.close();
}

TEST_F(WindowMessagesTest, HexadecimalDataIsAnOption)
{
    Arrive({12, true, false, 31});
    Entry("mnuListViewHexData").trigger();
    EXPECT_EQ(Cell(0, MessageListModel::Data), "0x1F");
    Entry("mnuListViewHexData").trigger();
    EXPECT_EQ(Cell(0, MessageListModel::Data), "31");
}

TEST_F(WindowMessagesTest, TheCompactListBeginsEmpty)
{
    Arrive({12, true, false, 31});
    Entry("mnuListViewCompactList").trigger();
    EXPECT_THAT(Lines(), IsEmpty());
    Arrive({12, true, false, 1});
    vehicle.Send({12, true, false, 2});
    ASSERT_TRUE(Until([this] { return Lines().size() == 1 && Cell(0, MessageListModel::Data) == "2"; }));
    Entry("mnuListViewCompactList").trigger();
    EXPECT_THAT(Lines(), SizeIs(1)) << "turning it off keeps the lines";
}

TEST_F(WindowMessagesTest, ShowingAllMessagesOffersTheUndefinedToo)
{
    vehicle.Send({1020, false, false, 0});
    Arrive({12, true, false, 1});
    EXPECT_THAT(Lines(), SizeIs(1)) << "an internal message is hidden";
    Entry("mnuListViewShowAll").trigger();
    EXPECT_EQ(Control<QComboBox>("CboCategory").currentText(), "<Undefined Messages>");
    Arrive({1020, false, false, 0});
    EXPECT_THAT(Lines(), SizeIs(2));
}

TEST_F(WindowMessagesTest, ClearEmptiesTheList)
{
    Arrive({12, true, false, 1});
    Window().setMsg("something");
    Click("Clear");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(Msg(), "");
}

TEST_F(WindowMessagesTest, AFloodHidesTheListUntilItIsThrough)
{
    QByteArray flood;
    for (int i = 0; i < 60; ++i) {
        const Frame::Bytes bytes = Frame{12, true, false, std::uint16_t(i)}.Encode();
        flood.append(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    }
    bool hidden = false;
    vehicle.Write(flood);
    ASSERT_TRUE(Until([this, &hidden] {
        hidden = hidden || Control<QWidget>("lblUpdatingMessageList").isVisible();
        return Window().Messages().NewestRow() == 59;
    }));
    EXPECT_TRUE(hidden);
    ASSERT_TRUE(Until([this] { return Lines().size() == 60; }));
    EXPECT_TRUE(Window().MessageList().isVisible());
    EXPECT_EQ(Cell(59, MessageListModel::Data), "59");
}

TEST_F(WindowMessagesTest, TheConnectionMethodsTakeTurns)
{
    Click("Disconnect");
    for (const char* entry : {"mnuConnectUsing_102", "mnuConnectUsing_103", "mnuConnectUsing_101"}) {
        Click("ConnectUsing");
        EXPECT_TRUE(Entry(entry).isChecked()) << entry;
    }
    Entry("mnuConnectUsing_103").trigger();
    EXPECT_TRUE(Button("ConnectUsing").toolTip().contains("Pipe Server"));
    Window().close();
    EXPECT_EQ(Stored("Settings/ConnectionType"), "3");
}

TEST_F(WindowMessagesTest, AMissingHelpFileIsToldWithItsPath)
{
    Entry("mnuHelpDiagManual").trigger();
    EXPECT_EQ(user.seen, QStringList{"The file " + ProgramFile("Help/Fenrik Diagnostics.pdf") + " is missing"});
}

TEST_F(WindowMessagesTest, ALinkWhoseLogVanishesKeepsShowingTheTraffic)
{
    ASSERT_TRUE(QDir(ProgramFile("diaglogs")).removeRecursively());
    Arrive({12, true, false, 1});
    Arrive({12, true, false, 2});
    ASSERT_THAT(user.seen, SizeIs(1)) << "told once";
    EXPECT_TRUE(user.seen[0].contains(">> Error <75>")) << user.seen[0].toStdString();
}

}  // namespace
}  // namespace fenrik
