#include "commands/frmCmdQry.h"

#include "CommandsFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

class CommandQueryWindow : public CommandsTest {
protected:
    CommandQueryWindow()
    {
        Define(5, "Head Lamps", "Lamps");
        Define(6, "Wipers", "Glass");
        Define(7, "Tail Lamps", "Lamps");
        Define(30, "Probe", "Internal", 99);
    }

    void Define(int number, const char* name, const char* category, std::int16_t rank = 1)
    {
        commands[number].Name = name;
        commands[number].Category = category;
        commands[number].CategoryRank = rank;
    }

    void Open()
    {
        window = std::make_unique<frmCmdQry>(handler, system, commands, window_host, errors);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    template <typename Widget>
    Widget& Find(const char* name) const
    {
        return *window->findChild<Widget*>(name);
    }
    void Click(const char* name) const
    {
        auto& widget = Find<QWidget>(name);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(10, widget.height() / 2));
    }
    /// As a user does with the keyboard.
    void Choose(const char* list, int downs) const
    {
        Find<QWidget>(list).setFocus();
        for (int i = 0; i < downs; ++i)
            QTest::keyClick(&Find<QWidget>(list), Qt::Key_Down);
    }

    [[nodiscard]] QStringList Entries(const char* name) const
    {
        const auto& list = Find<QComboBox>(name);
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts.append(list.itemText(row));
        return texts;
    }
    [[nodiscard]] QStringList Results() const
    {
        const auto& list = Find<QListWidget>("lstResults");
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts.append(list.item(row)->text());
        return texts;
    }
    [[nodiscard]] QString Result() const { return Find<QLabel>("lblResult").text(); }

    CommandsHostRecorder window_host{system, host};
    std::unique_ptr<frmCmdQry> window;
};

TEST_F(CommandQueryWindow, ListsCategoriesCommandsAndNodes)
{
    Open();
    EXPECT_EQ(window->windowTitle(), "Command Query");
    EXPECT_EQ(Find<QLabel>("lblNodeNumber").text(), "Ask which Node for Command State Information?");
    EXPECT_EQ(Find<QGroupBox>("fraResults").title(), "Results");
    // Hidden categories are asked for as well.
    EXPECT_THAT(Entries("cboCatList"), ElementsAre("Lamps", "Glass", "Internal"));
    EXPECT_EQ(Find<QComboBox>("cboCatList").currentText(), "Lamps");
    EXPECT_THAT(Entries("cboCmdList"), ElementsAre("Head Lamps", "Tail Lamps"));
    EXPECT_EQ(Find<QComboBox>("cboCmdList").currentText(), "Head Lamps");
    EXPECT_THAT(Entries("cboNodeNumber"), SizeIs(32));
    EXPECT_EQ(Entries("cboNodeNumber").last(), "32");
    EXPECT_THAT(Results(), IsEmpty());
    EXPECT_EQ(Result(), "");
}

TEST_F(CommandQueryWindow, ACategoryOffersItsCommands)
{
    Open();
    Choose("cboCatList", 1);
    EXPECT_THAT(Entries("cboCmdList"), ElementsAre("Wipers"));
    EXPECT_EQ(Find<QComboBox>("cboCmdList").currentText(), "Wipers");
}

TEST_F(CommandQueryWindow, ACategoryChosenAgainBeginsWithItsFirstCommand)
{
    Open();
    const QString first = Find<QComboBox>("cboCmdList").currentText();
    Choose("cboCmdList", 1);
    ASSERT_NE(Find<QComboBox>("cboCmdList").currentText(), first);
    Q_EMIT Find<QComboBox>("cboCatList").textActivated(Find<QComboBox>("cboCatList").currentText());
    EXPECT_EQ(Find<QComboBox>("cboCmdList").currentText(), first);
}

TEST_F(CommandQueryWindow, AGoodRunLeavesOneLine)
{
    Open();
    Choose("cboCmdList", 1);
    Choose("cboNodeNumber", 2);
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("901 0 3", "905 1 3", "920 1 7", "905 0 3"));
    EXPECT_THAT(Results(), ElementsAre("---->Node 3 believes Tail Lamps is ON."));
    EXPECT_EQ(Result(), "ON");
}

TEST_F(CommandQueryWindow, VerboseListsEveryStep)
{
    Open();
    Click("chkVerbose");
    Click("bSend");
    EXPECT_THAT(Results(), SizeIs(12));
    EXPECT_EQ(Results().first(), "Begin Processing...");
    EXPECT_EQ(Results().last(), "End Processing...");
}

TEST_F(CommandQueryWindow, ResultsAddUpUnlessTheyAreClearedOnSend)
{
    Open();
    Click("bSend");
    Click("bSend");
    EXPECT_THAT(Results(), SizeIs(2));
    Click("chkClearResults");
    Click("bSend");
    EXPECT_THAT(Results(), SizeIs(1));
}

TEST_F(CommandQueryWindow, AnotherChoiceForgetsTheResultAndWithClearingTheLines)
{
    Open();
    Click("bSend");
    Choose("cboNodeNumber", 1);
    EXPECT_EQ(Result(), "");
    EXPECT_THAT(Results(), SizeIs(1));

    Click("bSend");
    Click("chkClearResults");
    Choose("cboCmdList", 1);
    EXPECT_EQ(Result(), "");
    EXPECT_THAT(Results(), IsEmpty());
}

TEST_F(CommandQueryWindow, AnErrorIsALineAndNoResult)
{
    answer = [](const Frame&) { return std::nullopt; };
    Open();
    Click("bSend");
    EXPECT_THAT(Results(), ElementsAre("ERROR: Node 1 did not respond to ping."));
    EXPECT_EQ(Result(), "");
    EXPECT_TRUE(Find<QPushButton>("bSend").isEnabled());
    EXPECT_TRUE(Find<QComboBox>("cboCmdList").isEnabled());
}

TEST_F(CommandQueryWindow, AnEmptyCatalogueAsksForTheNumberOfNoCommand)
{
    commands.Clear();
    Open();
    EXPECT_THAT(Entries("cboCatList"), IsEmpty());
    Click("bSend");
    EXPECT_THAT(sent, testing::Contains("920 1 1280"));
}

TEST_F(CommandQueryWindow, ASecondSendDuringARunIsIgnored)
{
    Open();
    pump.After(0.05, [this] { Click("bSend"); });
    Click("bSend");
    EXPECT_THAT(sent, SizeIs(4));
    EXPECT_THAT(Results(), SizeIs(1));
}

TEST_F(CommandQueryWindow, TheChoiceCantBeChangedDuringARun)
{
    Open();
    bool enabled = true;
    pump.After(0.05, [&] { enabled = Find<QComboBox>("cboCmdList").isEnabled(); });
    Click("bSend");
    EXPECT_FALSE(enabled);
}

// The window goes at once; the mounts are put back all the same.
TEST_F(CommandQueryWindow, CloseDuringARunLetsItComeToItsEnd)
{
    Open();
    bool visible = true;
    pump.After(0.05, [&] {
        Click("bCancel");
        visible = window->isVisible();
    });
    Click("bSend");
    EXPECT_FALSE(visible);
    EXPECT_THAT(sent, ElementsAre("901 0 1", "905 1 1", "920 1 5", "905 0 1"));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(CommandQueryWindow, EscapeCloses)
{
    Open();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(CommandQueryWindow, EnterSends)
{
    Open();
    QTest::keyClick(&Find<QWidget>("cboNodeNumber"), Qt::Key_Return);
    EXPECT_THAT(sent, SizeIs(4));
}

TEST_F(CommandQueryWindow, AFailureInARunIsReportedAndTheWindowGoesOn)
{
    Open();
    pump.After(0.05, [] { throw Error(ErrorNumber::kOverflow, "Overflow"); });
    Click("bSend");
    Click("bSend");
    EXPECT_FALSE(errors.reports.empty());
    EXPECT_EQ(Result(), "ON");
}

}  // namespace
}  // namespace fenrik
