#include "app/Composer.h"

#include "AppFixture.h"
#include "messages/Messages.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowRecorder : public ComposerHost {
public:
    void SetUIState(int state) override { calls.push_back("state " + std::to_string(state)); }
    [[nodiscard]] bool IsConnected() const override { return connected; }
    [[nodiscard]] bool IsReady() const override { return ready; }
    void OpenSpecialCommand(const CMessage& message) override
    {
        calls.push_back("special " + std::to_string(message.Command) + ' ' + std::to_string(message.data));
    }
    void CommandSent() override { calls.push_back("sent"); }
    void SelectLastLine() override { calls.push_back("last line"); }

    bool connected = true;
    bool ready = true;
    std::vector<std::string> calls;
};

class ComposerTest : public AppTest {
protected:
    ComposerTest()
    {
        Define(5, "Head Lamps", "Lamps", 1);
        Define(7, "Tail Lamps", "Lamps", 1);
        Define(9, "Wipers", "Glass", 2);
        Define(20, "Secret", "Hidden", 3);
        Define(30, "Probe", "Internal", 99);
        Define(1026, "Dimmer", "Panels", 4);
        composer.Attach(window);
        composer.PopulatecboCategoryList("Hidden");
    }

    void Define(int number, const char* name, const char* category, std::int16_t rank)
    {
        commands[number].Name = name;
        commands[number].Category = category;
        commands[number].CategoryRank = rank;
    }

    template <typename T>
    [[nodiscard]] T& Control(const char* name)
    {
        return *composer.findChild<T*>(name);
    }
    [[nodiscard]] QComboBox& Category() { return Control<QComboBox>("CboCategory"); }
    [[nodiscard]] QComboBox& Command() { return Control<QComboBox>("CboCommand"); }
    [[nodiscard]] QLineEdit& Data() { return Control<QLineEdit>("TxtData"); }
    [[nodiscard]] QPushButton& Button(const char* name) { return Control<QPushButton>(name); }

    static std::string Items(const QComboBox& list)
    {
        QStringList items;
        for (int i = 0; i < list.count(); ++i)
            items.append(list.itemText(i));
        return items.join('|').toStdString();
    }

    void Click(const char* name) { QTest::mouseClick(&Button(name), Qt::LeftButton); }

    FakeNetwork network{handler, pump, portState};
    WindowRecorder window;
    Composer composer{services};
};

// --- Lists ---------------------------------------------------------------------------------------------------------

TEST_F(ComposerTest, TheCategoriesAreThoseThatTheCatalogueOffers)
{
    EXPECT_EQ(composer.objectName(), "PicMsgcenter");
    EXPECT_EQ(Items(Category()), "Lamps|Glass|Panels");
    EXPECT_EQ(Category().currentText(), "Lamps");
    EXPECT_EQ(Items(Command()), "Head Lamps|Tail Lamps");
    EXPECT_EQ(Command().currentText(), "Head Lamps");
}

TEST_F(ComposerTest, InternalCategoriesAndSingleBytesAreAnOption)
{
    settings.ShowFenrikInternal = true;
    composer.PopulatecboCategoryList("Hidden");
    EXPECT_EQ(Items(Category()), "<Send Byte>|Lamps|Glass|Hidden|Internal|Panels");
    EXPECT_EQ(Category().currentText(), "<Send Byte>");
}

TEST_F(ComposerTest, UndefinedMessagesAreAnOption)
{
    settings.ListAllMsgs = true;
    composer.PopulatecboCategoryList("Hidden");
    EXPECT_EQ(Items(Category()), "<Undefined Messages>|Lamps|Glass|Panels");
    EXPECT_EQ(Command().count(), 1279 - 6);
}

TEST_F(ComposerTest, BothOptionsPutTheByteFirst)
{
    settings.ShowFenrikInternal = true;
    settings.ListAllMsgs = true;
    composer.PopulatecboCategoryList("Hidden");
    EXPECT_TRUE(Items(Category()).starts_with("<Send Byte>|<Undefined Messages>|Lamps|"));
}

TEST_F(ComposerTest, ChoosingACategoryListsItsCommands)
{
    Category().setCurrentText("Glass");
    EXPECT_EQ(Items(Command()), "Wipers");
    EXPECT_EQ(Command().currentIndex(), 0);
}

TEST_F(ComposerTest, ASingleByteHasNoCommandStateOrThreeWay)
{
    settings.ShowFenrikInternal = true;
    composer.PopulatecboCategoryList("Hidden");
    EXPECT_EQ(Command().count(), 0);
    for (const char* name : {"CboCommand", "cmdState", "cmdExtended"})
        EXPECT_FALSE(Control<QWidget>(name).isEnabled()) << name;
    Category().setCurrentText("Lamps");
    for (const char* name : {"CboCommand", "cmdState", "cmdExtended"})
        EXPECT_TRUE(Control<QWidget>(name).isEnabled()) << name;
}

TEST_F(ComposerTest, TheButtonsToggleTheirCaptions)
{
    for (const char* caption : {"Off", "On", "Off"}) {
        Click("cmdState");
        EXPECT_EQ(Button("cmdState").text(), caption);
    }
    for (const char* caption : {"True", "False", "True"}) {
        Click("cmdExtended");
        EXPECT_EQ(Button("cmdExtended").text(), caption);
    }
}

// --- Sending -------------------------------------------------------------------------------------------------------

TEST_F(ComposerTest, SendingIsBracketedAndFollowedByTheListsEnd)
{
    Data().setText("258");
    Click("cmdSend");
    EXPECT_THAT(network.sent, ElementsAre("5 1 258"));
    EXPECT_THAT(network.shown, ElementsAre(5));
    EXPECT_THAT(window.calls, ElementsAre("state 8", "sent", "last line", "state 4"));
}

TEST_F(ComposerTest, StateAndCommandAreThoseOfTheControls)
{
    Command().setCurrentText("Tail Lamps");
    Click("cmdState");
    Click("cmdSend");
    EXPECT_THAT(network.sent, ElementsAre("7 0 0"));
}

struct DataRow {
    const char* text;
    const char* sent;
};

class ComposedData : public ComposerTest, public testing::WithParamInterface<DataRow> {};

TEST_P(ComposedData, IsReadByItsPrefix)
{
    Data().setText(GetParam().text);
    Click("cmdSend");
    EXPECT_THAT(network.sent, ElementsAre(GetParam().sent));
}

INSTANTIATE_TEST_SUITE_P(Composer, ComposedData,
                         testing::Values(DataRow{"0x1F", "5 1 31"}, DataRow{"1F", "5 1 1"}, DataRow{"", "5 1 0"},
                                         DataRow{"65535", "5 1 65535"}, DataRow{"0xFFFF", "5 1 65535"},
                                         DataRow{"65536", "5 1 0"}));

TEST_F(ComposerTest, ASubCommandTravelsInItsCarrierAndReplacesTheData)
{
    Category().setCurrentText("Panels");
    Data().setText("7");
    Click("cmdSend");
    EXPECT_THAT(network.sent, ElementsAre("1000 1 512"));
}

TEST_F(ComposerTest, NothingIsSentWithoutAConnection)
{
    window.connected = false;
    Click("cmdSend");
    EXPECT_THAT(network.sent, IsEmpty());
    EXPECT_THAT(window.calls, ElementsAre("state 8", "sent", "last line", "state 4"));
}

TEST_F(ComposerTest, ANameThatIsInNoTableIsOutOfRange)
{
    Command().clear();
    Click("cmdSend");
    EXPECT_THAT(network.sent, IsEmpty());
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 9);
    EXPECT_EQ(errors.reports[0].description, "Subscript out of range");
    EXPECT_EQ(window.calls.back(), "state 4");
}

TEST_F(ComposerTest, DataBeyondAllNumbersIsReported)
{
    Data().setText("9999999999");
    Click("cmdSend");
    EXPECT_THAT(network.sent, IsEmpty());
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kOverflow);
    EXPECT_EQ(window.calls.back(), "state 4");
}

TEST_F(ComposerTest, ASpecialCommandOpensItsWindowInsteadOfBeingSent)
{
    LoadSpecialCommands();
    Define(969, "Node Control", "Glass", 2);
    composer.PopulatecboCategoryList("Hidden");
    Category().setCurrentText("Glass");
    Command().setCurrentText("Node Control");
    Data().setText("515");
    Click("cmdSend");
    EXPECT_THAT(network.sent, IsEmpty());
    EXPECT_THAT(window.calls, ElementsAre("state 8", "special 969 515", "sent", "last line", "state 4"));
}

TEST_F(ComposerTest, EnterInTheDataSends)
{
    composer.show();
    Data().setFocus();
    QTest::keyClicks(&Data(), "3");
    QTest::keyClick(&Data(), Qt::Key_Return);
    ASSERT_THAT(network.sent, SizeIs(1));
    EXPECT_EQ(composer.focusWidget(), &Button("cmdSend")) << "and the field is left";
}

TEST_F(ComposerTest, EnterDoesNotSendWhileSendingIsNotOffered)
{
    composer.SetSendEnabled(false);
    QTest::keyClick(&Data(), Qt::Key_Return);
    EXPECT_THAT(network.sent, IsEmpty());
}

TEST_F(ComposerTest, TheListsLeaveTheClearKeyToTheWindow)
{
    composer.show();
    QTest::keyClick(&Category(), Qt::Key_F4);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

// --- Single bytes --------------------------------------------------------------------------------------------------

class SingleBytes : public ComposerTest, public testing::WithParamInterface<DataRow> {
protected:
    SingleBytes()
    {
        settings.ShowFenrikInternal = true;
        composer.PopulatecboCategoryList("Hidden");
        portFolder.Link(1, terminal.Path());
        port.setPortOpen(true);
        Data().setText(GetParam().text);
        Click("cmdSend");
    }

    PseudoTerminal terminal;
};

TEST_P(SingleBytes, GoStraightToThePort)
{
    EXPECT_EQ(terminal.Read(1), QByteArray::fromHex(GetParam().sent));
    EXPECT_THAT(network.sent, IsEmpty()) << "no frame";
    EXPECT_THAT(network.shown, IsEmpty()) << "no line";
}

INSTANTIATE_TEST_SUITE_P(Composer, SingleBytes,
                         testing::Values(DataRow{"0", "00"}, DataRow{"158", "9E"}, DataRow{"0xFF", "FF"},
                                         DataRow{"255", "FF"}));

class LargeBytes : public SingleBytes {};

TEST_P(LargeBytes, AreRefusedInABox)
{
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Number must be between 0 and 255");
    EXPECT_EQ(terminal.Read(1, 20), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(Composer, LargeBytes,
                         testing::Values(DataRow{"256", ""}, DataRow{"0x100", ""}, DataRow{"0xFFFFFFFF", ""}));

TEST_F(ComposerTest, AByteForAClosedPortIsReported)
{
    settings.ShowFenrikInternal = true;
    composer.PopulatecboCategoryList("Hidden");
    Click("cmdSend");
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kPortNotOpen);
    EXPECT_EQ(window.calls.back(), "state 4");
}

// --- Taking a line over --------------------------------------------------------------------------------------------

TEST_F(ComposerTest, ALineIsTakenOverWithAllItsValues)
{
    EXPECT_TRUE(composer.ShowMessage(Received(9, 31, false, true)));
    EXPECT_EQ(Category().currentText(), "Glass");
    EXPECT_EQ(Command().currentText(), "Wipers");
    EXPECT_EQ(Button("cmdState").text(), "Off");
    EXPECT_EQ(Button("cmdExtended").text(), "True");
    EXPECT_EQ(Data().text(), "31");
    EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(ComposerTest, ALinesDataTakesThePresentForm)
{
    settings.HexData = true;
    composer.ShowMessage(Received(9, 31));
    EXPECT_EQ(Data().text(), "0x1F");
}

TEST_F(ComposerTest, ALineOfASpecialCommandOpensItsWindow)
{
    LoadSpecialCommands();
    Define(969, "Node Control", "Glass", 2);
    composer.PopulatecboCategoryList("Hidden");
    EXPECT_TRUE(composer.ShowMessage(Received(969, 515)));
    EXPECT_EQ(Command().currentText(), "Node Control");
    EXPECT_THAT(window.calls, ElementsAre("special 969 515"));
}

TEST_F(ComposerTest, ALineOfASpecialCommandOpensNothingDuringAnExchange)
{
    LoadSpecialCommands();
    Define(969, "Node Control", "Glass", 2);
    composer.PopulatecboCategoryList("Hidden");
    window.ready = false;
    EXPECT_TRUE(composer.ShowMessage(Received(969, 515)));
    EXPECT_EQ(Command().currentText(), "Node Control");
    EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(ComposerTest, ALineWhoseCategoryIsNotOfferedChangesNothing)
{
    Data().setText("5");
    EXPECT_FALSE(composer.ShowMessage(Received(30, 31, false)));
    EXPECT_EQ(Command().currentText(), "Head Lamps");
    EXPECT_EQ(Button("cmdState").text(), "On");
    EXPECT_EQ(Data().text(), "5");
}

}  // namespace
}  // namespace fenrik
