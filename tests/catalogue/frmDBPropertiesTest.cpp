#include "catalogue/frmDBProperties.h"

#include "DialogFixture.h"
#include "SystemFolder.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Chooses a file without showing a box.
class FileChooser : public BoxRecorder {
public:
    QString OpenFileBox(const QString& title, const QString& filter, const QString& start) override
    {
        asked = {title, filter, start};
        if (fails)
            throw Error(ErrorNumber::kPathFileAccess, "The folder is gone.");
        return chosen;
    }

    QStringList asked;
    QString chosen;
    bool fails = false;
};

class DatabaseOptions : public DialogFixture {
protected:
    DatabaseOptions()
    {
        settings.SelectedMarket = 1;
        SystemFolder::Database(folder.Program("Alpha.dav"), VersionStatements("4"));
        SystemFolder::Image(folder.Program("Beta_Node 1.bin"));
        SystemFolder::Image(folder.Program("Beta_Node 2.bin"));
    }

    void Open() { Show(std::make_unique<frmDBProperties>(settings, folder.ProgramFolder(), boxes, errors)); }

    QString Selected() const { return Find<QListWidget>("lstSystems").currentItem()->text(); }
    void Click(const char* name) const { QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton); }

    void ClickLine(int row) const
    {
        auto& list = Find<QListWidget>("lstSystems");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
    }

    SystemFolder folder;
    Settings settings;
    FileChooser boxes;
    ErrorRecorder errors;
};

TEST_F(DatabaseOptions, ShowTheSystemsAndBesideThemTheirFolders)
{
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Database Options");
    EXPECT_THAT(Texts("lstSystems"), ElementsAre("(Default Database) ncCommands.dav", "Alpha", "Beta"));
    EXPECT_THAT(Texts("lstPaths"), ElementsAre(folder.Program(), folder.Program(), folder.Program()));
    EXPECT_TRUE(Find<QWidget>("lstPaths").isHidden());
    EXPECT_EQ(Label("lblTitle"), "Subset of Commands based on market type");
    EXPECT_EQ(Find<QGroupBox>("fraMarket").title(), " Selected Market");
    EXPECT_EQ(Find<QPushButton>("cmdBrowse").text(), "Browse...");
    EXPECT_EQ(Find<QPushButton>("cmdOk").text(), "O&k");
    EXPECT_EQ(Find<QPushButton>("cmdCancel").text(), "Cancel");
    EXPECT_EQ(Selected(), "(Default Database) ncCommands.dav");
}

TEST_F(DatabaseOptions, SelectTheSystemInUse)
{
    settings.SystemName = "Beta";
    settings.SystemPath = folder.Program();
    Open();
    EXPECT_EQ(Selected(), "Beta");
    EXPECT_EQ(Label("lblNodes"), "2 Nodes in System");
}

TEST_F(DatabaseOptions, ShowWhatIsKnownOfTheLineThatIsClicked)
{
    Open();
    EXPECT_EQ(Label("lblVersion"), "Using default database");
    ClickLine(1);
    EXPECT_EQ(Label("lblVersion"), "4");
    EXPECT_EQ(Label("lblPath"), folder.Program("Alpha.dav"));
    EXPECT_NE(Label("lblModified"), "");
    EXPECT_EQ(Label("lblNodes"), "Unknown");
    ClickLine(2);
    EXPECT_EQ(Label("lblVersion"), "No custom Command Database found.");
    EXPECT_EQ(Label("lblModified"), "");
    EXPECT_EQ(Label("lblNodes"), "2 Nodes in System");
}

TEST_F(DatabaseOptions, OkTakesTheSystemAndTheMarket)
{
    Open();
    ClickLine(1);
    Find<QComboBox>("cmbMarket").setCurrentText("Truck");
    Click("cmdOk");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(settings.SystemName, "Alpha");
    EXPECT_EQ(settings.SystemPath, folder.Program());
    EXPECT_EQ(settings.SelectedMarket, 3);
}

TEST_F(DatabaseOptions, OkOnTheDefaultLineEmptiesNameAndPath)
{
    settings.SystemName = "Alpha";
    settings.SystemPath = folder.Program();
    Open();
    ClickLine(0);
    Click("cmdOk");
    EXPECT_EQ(settings.SystemName, "");
    EXPECT_EQ(settings.SystemPath, "");
}

TEST_F(DatabaseOptions, CancelLeavesAllAsItWas)
{
    for (const bool byKey : {false, true}) {
        Open();
        ClickLine(1);
        Find<QComboBox>("cmbMarket").setCurrentText("Truck");
        if (byKey)
            QTest::keyClick(dialog.get(), Qt::Key_Escape);
        else
            Click("cmdCancel");
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
        EXPECT_EQ(settings.SystemName, "");
        EXPECT_EQ(settings.SelectedMarket, 1);
    }
}

TEST_F(DatabaseOptions, AreWorkedByKeysAlone)
{
    Open();
    QWidget& list = Find<QWidget>("lstSystems");
    EXPECT_TRUE(list.hasFocus());
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(Label("lblVersion"), "4");
    QStringList order;
    for (int step = 0; step < 5; ++step) {
        order.append(dialog->focusWidget()->objectName());
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("lstSystems", "cmdBrowse", "cmbMarket", "cmdOk", "cmdCancel"));
    QTest::keyClick(dialog.get(), Qt::Key_K, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !dialog->isVisible(); }));  // a button is seen going down and up
    EXPECT_EQ(settings.SystemName, "Alpha");
}

TEST_F(DatabaseOptions, ADoubleClickOnALineChoosesIt)
{
    Open();
    auto& list = Find<QListWidget>("lstSystems");
    ClickLine(2);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(2)).center());
    EXPECT_EQ(settings.SystemName, "Beta");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(DatabaseOptions, MarketsAreThoseOfTheDefaultFileAndThePresentOneIsSelected)
{
    Open();
    const auto& markets = Find<QComboBox>("cmbMarket");
    ASSERT_EQ(markets.count(), 2);
    EXPECT_EQ(markets.itemText(0), "Truck");
    EXPECT_EQ(markets.itemData(0), 3);
    EXPECT_EQ(markets.currentText(), "Bus");
}

TEST_F(DatabaseOptions, TheMarketKeepsItsValueIfThereAreNone)
{
    SystemFolder::Database(folder.Program("ncCommand.dav"));
    settings.SelectedMarket = 2;
    Open();
    EXPECT_EQ(Find<QComboBox>("cmbMarket").count(), 0);
    Click("cmdOk");
    EXPECT_EQ(settings.SelectedMarket, 2);
}

TEST_F(DatabaseOptions, AnUnknownMarketIsKeptUntilOneIsChosen)
{
    settings.SelectedMarket = 77;
    Open();
    EXPECT_EQ(Find<QComboBox>("cmbMarket").currentIndex(), -1);
    Click("cmdOk");
    EXPECT_EQ(settings.SelectedMarket, 77);
}

TEST_F(DatabaseOptions, OpenWithoutADefaultFile)
{
    QFile::remove(folder.Program("ncCommand.dav"));
    Open();
    EXPECT_EQ(Label("lblVersion"), "Using default database");
    EXPECT_EQ(Label("lblModified"), "");
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(DatabaseOptions, BrowseAddsAFileFromElsewhereAndSelectsIt)
{
    SystemFolder::Database(folder.Stick("Coach.dav"));
    boxes.chosen = folder.Stick("Coach.dav");
    Open();
    Click("cmdBrowse");
    EXPECT_THAT(boxes.asked, ElementsAre("Select Fenrik Command Database",
                                         "All Fenrik file types (*.bin *.dav);;"
                                         "Fenrik Node-Specific Binaries (*.bin);;Fenrik Command Databases (*.dav)",
                                         folder.Program()));
    EXPECT_EQ(Selected(), "Coach");
    EXPECT_EQ(Texts("lstPaths").last(), folder.Stick());
    Click("cmdOk");
    EXPECT_EQ(settings.SystemName, "Coach");
    EXPECT_EQ(settings.SystemPath, folder.Stick());
}

TEST_F(DatabaseOptions, BrowseThatIsCancelledChangesNothing)
{
    Open();
    Click("cmdBrowse");
    EXPECT_EQ(Find<QListWidget>("lstSystems").count(), 3);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(DatabaseOptions, AFileThatIsNoSystemGetsTheBoxOnlyThroughBrowse)
{
    SystemFolder::Image(folder.Program("Short_Node 1.bin"), 32'767);
    Open();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    boxes.chosen = folder.Program("Short_Node 1.bin");
    Click("cmdBrowse");
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, "This is not a valid Fenrik Binary or Commands database.");
    EXPECT_EQ(boxes.boxes[0].title, "Select Fenrik System");
    EXPECT_EQ(Find<QListWidget>("lstSystems").count(), 3);
}

TEST_F(DatabaseOptions, AFileThatIsListedIsToldAndSelected)
{
    Open();
    boxes.chosen = folder.Program("Beta_Node 2.bin");
    Click("cmdBrowse");
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, "This file already exists in the list (Beta).");
    EXPECT_EQ(boxes.boxes[0].title, "Select Fenrik System");
    EXPECT_EQ(Selected(), "Beta");
}

TEST_F(DatabaseOptions, AnErrorInBrowseIsReported)
{
    Open();
    boxes.fails = true;
    Click("cmdBrowse");
    ASSERT_EQ(errors.reports.size(), 1U);
    EXPECT_EQ(errors.reports[0].where, "frmDBProperties:cmdBrowse:Click");
}

TEST_F(DatabaseOptions, ALongPathLeavesTheDialogItsWidth)
{
    QString deep = folder.Stick();
    for (int level = 0; level < 12; ++level)
        deep += "a folder with a long name/";
    QDir().mkpath(deep);
    SystemFolder::Database(deep + "Coach.dav");
    boxes.chosen = deep + "Coach.dav";
    Open();
    const int width = dialog->minimumSizeHint().width();
    Click("cmdBrowse");
    EXPECT_EQ(Label("lblPath"), deep + "Coach.dav");
    EXPECT_EQ(dialog->minimumSizeHint().width(), width);
}

TEST_F(DatabaseOptions, AtTheSmallestSizeTheMarketsTitleIsStillWhole)
{
    Open();
    dialog->resize(dialog->minimumSizeHint());
    const auto& title = Find<QLabel>("lblTitle");
    ASSERT_TRUE(QTest::qWaitFor([this] { return dialog->width() <= dialog->minimumSizeHint().width(); }));
    const QRect text = title.fontMetrics().boundingRect(title.contentsRect(), Qt::TextWordWrap, title.text());
    EXPECT_LE(text.height(), title.contentsRect().height());
    EXPECT_LE(text.width(), title.contentsRect().width());
}

}  // namespace
}  // namespace fenrik
