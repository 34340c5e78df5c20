#include "CommSetupFixture.h"

#include <QListWidget>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kTab = 2;

class ProfileChoiceTest : public CommSetupTest {
protected:
    ProfileChoiceTest() { options.ConnectionType = 3; }

    [[nodiscard]] QStringList Profiles()
    {
        QStringList names;
        for (int row = 0; row < Combo("cboRDProfiles").count(); ++row)
            names.append(Combo("cboRDProfiles").itemText(row));
        return names;
    }

    static void Fill(QDialog& editor, const char* field, const QString& text)
    {
        auto* box = editor.findChild<QLineEdit*>(field);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    static void Press(QDialog& editor, const char* button)
    {
        QTest::mouseClick(editor.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    using CommSetupTest::Press;
};

TEST_F(ProfileChoiceTest, ListsTheProfilesAndSelectsTheOneInUse)
{
    OpenWith({ann, bob}, bob.key());
    EXPECT_THAT(Profiles(), ElementsAre("Ann", "Bob", "(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentText(), "Bob");
    EXPECT_TRUE(Check("cbRDEnable").isChecked());
    EXPECT_TRUE(Combo("cboRDProfiles").isEnabled());
    EXPECT_TRUE(Control<QPushButton>("cmdRDProfiles").isEnabled());
}

TEST_F(ProfileChoiceTest, WithoutProfilesThereIsOnlyTheLastRowAndNothingToEdit)
{
    Open();
    EXPECT_THAT(Profiles(), ElementsAre("(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), -1);
    Check("cbRDEnable").click();
    EXPECT_TRUE(Combo("cboRDProfiles").isEnabled());
    EXPECT_FALSE(Control<QPushButton>("cmdRDProfiles").isEnabled());
}

TEST_F(ProfileChoiceTest, TheCheckBoxEnablesItsCompanions)
{
    OpenWith({ann}, ann.key());
    QTest::keyClick(&Check("cbRDEnable"), Qt::Key_Space);
    EXPECT_FALSE(Combo("cboRDProfiles").isEnabled());
    EXPECT_FALSE(Control<QPushButton>("cmdRDProfiles").isEnabled());
    QTest::keyClick(&Check("cbRDEnable"), Qt::Key_Space);
    EXPECT_TRUE(Combo("cboRDProfiles").isEnabled());
    EXPECT_TRUE(Control<QPushButton>("cmdRDProfiles").isEnabled());
}

TEST_F(ProfileChoiceTest, ContinueTakesTheChosenProfile)
{
    OpenWith({ann, bob}, ann.key());
    Choose("cboRDProfiles", 1);
    EXPECT_EQ(remote.RDRecentProfileKey, ann.key());
    Press("cmdContinue");
    EXPECT_TRUE(remote.RDEnable);
    EXPECT_EQ(remote.RDRecentProfileKey, bob.key());
}

TEST_F(ProfileChoiceTest, ContinueWithoutTheCheckForgetsTheProfile)
{
    OpenWith({ann}, ann.key());
    Check("cbRDEnable").click();
    Press("cmdContinue");
    EXPECT_FALSE(remote.RDEnable);
    EXPECT_EQ(remote.RDRecentProfileKey, "");
}

TEST_F(ProfileChoiceTest, ClosingOtherwiseLeavesTheProfileAlone)
{
    OpenWith({ann, bob}, ann.key());
    Choose("cboRDProfiles", 1);
    dialog->close();
    EXPECT_EQ(remote.RDRecentProfileKey, ann.key());
    EXPECT_TRUE(remote.RDEnable);
}

TEST_F(ProfileChoiceTest, WithTheCheckAndNoProfileContinueStays)
{
    OpenWith({ann}, "{GONE}");
    ShowTab(0);
    Press("cmdContinue");
    EXPECT_TRUE(dialog->isVisible());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "In order to enable Remote Diagnostics, please choose a User Profile.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(Control<QTabWidget>("sstabPortSelection").currentIndex(), kTab);
    EXPECT_THAT(host.calls, IsEmpty());
    Check("cbRDEnable").click();
    Press("cmdContinue");
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(ProfileChoiceTest, TheLastRowOpensTheEditorForANewProfileAndSelectsIt)
{
    OpenWith({ann}, ann.key());
    const WhenShown editor("frmRemoteSettings", [](QDialog& window) {
        EXPECT_EQ(window.findChild<QListWidget*>("lstProfiles")->count(), 2);
        Fill(window, "txtField_1", "carl-id");
        Press(window, "cmdSave");
    });
    Choose("cboRDProfiles", 1);
    EXPECT_EQ(editor.Times(), 1);
    EXPECT_THAT(Profiles(), ElementsAre("Ann", "New User Profile 2", "(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), 1);
    Press("cmdContinue");
    ASSERT_NE(remote.CurrentProfile(), nullptr);
    EXPECT_EQ(remote.CurrentProfile()->LogonID, "carl-id");
}

TEST_F(ProfileChoiceTest, CancellingANewProfileSelectsTheFirstRow)
{
    OpenWith({ann, bob}, bob.key());
    const WhenShown editor("frmRemoteSettings", [](QDialog& window) { Press(window, "cmdCancel"); });
    Choose("cboRDProfiles", 2);
    EXPECT_EQ(editor.Times(), 1);
    EXPECT_THAT(Profiles(), ElementsAre("Ann", "Bob", "(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), 0);
}

TEST_F(ProfileChoiceTest, CancellingTheVeryFirstProfileSelectsNothing)
{
    Open();
    Check("cbRDEnable").click();
    const WhenShown editor("frmRemoteSettings", [](QDialog& window) { window.close(); });
    Choose("cboRDProfiles", 0);
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), -1);
    Choose("cboRDProfiles", 0);
    EXPECT_EQ(editor.Times(), 2);
}

TEST_F(ProfileChoiceTest, TheButtonOpensTheEditorOnTheChosenProfileAndSelectsTheOneItReports)
{
    OpenWith({ann, bob}, bob.key());
    const WhenShown editor("frmRemoteSettings", [](QDialog& window) {
        auto* list = window.findChild<QListWidget*>("lstProfiles");
        EXPECT_EQ(list->currentRow(), 1);
        list->setCurrentRow(0);
        Fill(window, "txtField_0", "Anna");
        Press(window, "cmdSave");
    });
    Press("cmdRDProfiles");
    EXPECT_EQ(editor.Times(), 1);
    EXPECT_THAT(Profiles(), ElementsAre("Anna", "Bob", "(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), 0);
}

TEST_F(ProfileChoiceTest, DeletingTheLastProfileLeavesNoneToChooseOrEdit)
{
    OpenWith({ann}, ann.key());
    const WhenShown editor("frmRemoteSettings", [](QDialog& window) {
        Press(window, "cmdDelete");
        Press(window, "cmdSave");
    });
    Press("cmdRDProfiles");
    EXPECT_THAT(Profiles(), ElementsAre("(Add new...)"));
    EXPECT_EQ(Combo("cboRDProfiles").currentIndex(), -1);
    EXPECT_FALSE(Control<QPushButton>("cmdRDProfiles").isEnabled());
    Press("cmdContinue");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ProfileChoiceTest, ADamagedProfileStoreLeavesTheCompanionsDisabled)
{
    RegistryStore broken(UnusablePath());
    MRegistry brokenRegistry(broken, errors);
    PipeSettings storage(brokenRegistry, boxes, clock, [] { return QString(); });
    RDMain none(storage, texts);
    none.LoadRDSettings();
    ASSERT_FALSE(none.StorageWorks());
    boxes.boxes.clear();
    dialog = std::make_unique<frmCommSetup>(
        frmCommSetup::Parts{options, run, none, storage, ports, port, boxes, errors, pump, host});
    dialog->show();
    Check("cbRDEnable").click();
    EXPECT_FALSE(Combo("cboRDProfiles").isEnabled());
    EXPECT_FALSE(Control<QPushButton>("cmdRDProfiles").isEnabled());
    Press("cmdContinue");
    EXPECT_THAT(BoxTexts(), ElementsAre("In order to enable Remote Diagnostics, please choose a User Profile."));
    Check("cbRDEnable").click();
    Press("cmdContinue");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(none.RDEnable);
}

}  // namespace
}  // namespace fenrik
