#include "remote/frmRemoteSettings.h"

#include "ProfilesFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SettingsWindow : public ProfilesTest {
protected:
    void Open(const CPipeProfiles& profiles, int selected = 1, bool asNew = false)
    {
        window = std::make_unique<frmRemoteSettings>(profiles, selected, settings, boxes);
        window->IsNewProfileDialog = asNew;
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    template <typename Child = QWidget>
    Child& Find(const char* name) const
    {
        return *window->findChild<Child*>(QLatin1String(name));
    }
    void Click(const char* name) const { QTest::mouseClick(&Find(name), Qt::LeftButton); }
    [[nodiscard]] QListWidget& List() const { return Find<QListWidget>("lstProfiles"); }
    [[nodiscard]] QStringList Rows() const
    {
        QStringList rows;
        for (int row = 0; row < List().count(); ++row)
            rows.append(List().item(row)->text());
        return rows;
    }
    void ClickRow(int row) const
    {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(List().item(row)).center());
    }
    [[nodiscard]] QLineEdit& Field(int field) const
    {
        return Find<QLineEdit>(qPrintable(QStringLiteral("txtField_%1").arg(field)));
    }
    [[nodiscard]] QStringList Fields() const
    {
        return {Field(0).text(), Field(1).text(), Field(2).text(), Field(3).text()};
    }
    /// Clicks into the box and types over what it holds.
    void Enter(int field, const QString& text) const
    {
        QTest::mouseClick(&Field(field), Qt::LeftButton);
        QTest::keyClick(&Field(field), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&Field(field), Qt::Key_Backspace);
        QTest::keyClicks(&Field(field), text);
    }
    [[nodiscard]] QString Focus() const { return window->focusWidget() ? window->focusWidget()->objectName() : ""; }

    /// The box in which a row's label is edited.
    [[nodiscard]] QLineEdit* Editor() const { return List().viewport()->findChild<QLineEdit*>(); }
    void Rename(const QString& text) const
    {
        ASSERT_NE(Editor(), nullptr);
        Editor()->selectAll();
        QTest::keyClick(Editor(), Qt::Key_Backspace);
        QTest::keyClicks(Editor(), text);
        QTest::keyClick(Editor(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Editor(); }));
    }

    std::unique_ptr<frmRemoteSettings> window;
};

TEST_F(SettingsWindow, TheBoxesOfBothFramesShareALeftEdge)
{
    Open({ann, bob});
    const auto left = [this](int field) { return Field(field).mapTo(window.get(), QPoint()).x(); };
    for (const int field : {1, 2, 3})
        EXPECT_EQ(left(field), left(0)) << field;
}

TEST_F(SettingsWindow, ALongNameTakesSeveralLinesOfTheList)
{
    CPipeProfile longest = ann;
    longest.UserName = QString("A workshop with a name ").repeated(10);
    Open({longest, bob});
    const QRect row = List().visualItemRect(List().item(0));
    EXPECT_LE(row.width(), List().viewport()->width());
    EXPECT_GE(row.height(), 3 * List().visualItemRect(List().item(1)).height());
}

TEST_F(SettingsWindow, ListsTheProfilesAndShowsTheSelectedOne)
{
    Open({ann, bob}, 2);
    EXPECT_EQ(window->windowTitle(), "Remote Diagnostics Settings");
    EXPECT_THAT(Rows(), ElementsAre("Ann", "Bob"));
    EXPECT_THAT(Fields(), ElementsAre("Bob", "bob-id", "192.0.2.7", "4000"));
    ClickRow(0);
    EXPECT_THAT(Fields(), ElementsAre("Ann", "ann-id", "relay.example", "48051"));
    EXPECT_EQ(window->GetSelectedProfile(), ann);
}

TEST_F(SettingsWindow, ShowsTheBeginningOfALongText)
{
    CPipeProfile wordy = ann;
    wordy.UserName = QString(200, 'n');
    wordy.ServerName = QString(200, 's');
    Open({ann, wordy});
    ClickRow(1);
    EXPECT_EQ(Field(0).cursorPosition(), 0);
    EXPECT_EQ(Field(2).cursorPosition(), 0);
}

TEST_F(SettingsWindow, WithoutASelectionThereIsNothingToEdit)
{
    Open({ann}, 0);
    EXPECT_FALSE(window->GetSelectedProfile());
    EXPECT_FALSE(Field(0).isEnabled());
    EXPECT_FALSE(Field(3).isEnabled());
    EXPECT_FALSE(Find<QPushButton>("cmdDelete").isEnabled());
    EXPECT_THAT(Fields(), ElementsAre("", "", "", ""));
}

TEST_F(SettingsWindow, ABoxChangesTheProfileAtOnce)
{
    Open({ann});
    Enter(0, "Anna");
    EXPECT_THAT(Rows(), ElementsAre("Anna"));
    Enter(1, "new-id");
    Enter(2, "other.example");
    Enter(3, "80");
    EXPECT_THAT(window->GetLocalProfileCollection(),
                ElementsAre(CPipeProfile{"Anna", "new-id", "other.example", 80, "{ANN}"}));
}

TEST_F(SettingsWindow, CancelCostsNothing)
{
    static_cast<void>(settings.SaveProfiles({ann}));
    Open({ann});
    Enter(0, "Anna");
    Click("cmdCancel");
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->DidSaveChanges());
    EXPECT_THAT(settings.LoadProfiles(), ElementsAre(ann));
}

TEST_F(SettingsWindow, SaveNotesItAndHides)
{
    Open({ann, bob});
    Enter(0, "Anna");
    Click("cmdSave");
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(window->DidSaveChanges());
    EXPECT_EQ(window->GetLocalProfileCollection()[0].UserName, "Anna");
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

struct Invalid {
    const char* name;
    CPipeProfile profile;
    int field;
    const char* caption;
};

class InvalidProfile : public SettingsWindow, public testing::WithParamInterface<Invalid> {};

TEST_P(InvalidProfile, IsSelectedAndNamedAndNothingIsSaved)
{
    Open({ann, GetParam().profile, bob});
    Click("cmdSave");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, QStringLiteral("One of the profiles has an invalid %1!").arg(GetParam().caption));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(List().currentRow(), 1);
    EXPECT_EQ(Focus(), Field(GetParam().field).objectName());
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->DidSaveChanges());
}

INSTANTIATE_TEST_SUITE_P(Profiles, InvalidProfile,
                         testing::Values(Invalid{"Name", {"", "i", "s", 1, "{X}"}, 0, "Name"},
                                         Invalid{"LogonID", {"N", "", "s", 1, "{X}"}, 1, "Logon ID"},
                                         Invalid{"Server", {"N", "i", "", 1, "{X}"}, 2, "Name"},
                                         Invalid{"PortZero", {"N", "i", "s", 0, "{X}"}, 3, "Port"},
                                         Invalid{"PortTooHigh", {"N", "i", "s", 65536, "{X}"}, 3, "Port"},
                                         Invalid{"FirstOfSeveral", {"N", "", "", 0, "{X}"}, 1, "Logon ID"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(SettingsWindow, AFaultInABoxWithoutACaptionIsToldWithoutItsName)
{
    Open({{"N", "i", "s", 0, "{X}"}});
    Find<QLabel>("lblField_3").clear();
    Click("cmdSave");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Cannot save changes because one of the profiles has an invalid setting.");
}

class HeldBox : public SettingsWindow, public testing::WithParamInterface<std::pair<int, const char*>> {};

TEST_P(HeldBox, KeepsTheFocusWhileItsValueIsInvalid)
{
    const auto& [field, text] = GetParam();
    const QString name = QStringLiteral("txtField_%1").arg(field);
    Open({ann, bob});
    Enter(field, QLatin1String(text));
    QTest::keyClick(&Field(field), Qt::Key_Tab);
    EXPECT_EQ(Focus(), name);
    QTest::keyClick(&Field(field), Qt::Key_Backtab);
    EXPECT_EQ(Focus(), name);
    QTest::mouseClick(&Field((field + 1) % 4), Qt::LeftButton);
    EXPECT_EQ(Focus(), name);
    ClickRow(1);
    EXPECT_EQ(List().currentRow(), 0);
    Click("cmdSave");
    Click("cmdAddNew");
    // What an access key does in the end; the key itself works the button after a while only.
    Find<QPushButton>("cmdAddNew").click();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(Rows(), SizeIs(2));
    EXPECT_EQ(Focus(), name);

    Enter(field, "1");
    QTest::keyClick(&Field(field), Qt::Key_Tab);
    EXPECT_NE(Focus(), name);
}

TEST_P(HeldBox, LetsCancelAndClosingThrough)
{
    const auto& [field, text] = GetParam();
    for (const bool byButton : {true, false}) {
        Open({ann});
        Enter(field, QLatin1String(text));
        if (byButton)
            Click("cmdCancel");
        else
            window->close();
        EXPECT_FALSE(window->isVisible());
    }
    Open({ann});
    Enter(field, QLatin1String(text));
    QTest::keyClick(&Field(field), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Fields, HeldBox,
                         testing::Values(std::pair(0, ""), std::pair(0, "  "), std::pair(1, ""), std::pair(2, ""),
                                         std::pair(3, ""), std::pair(3, "0"), std::pair(3, "65536"),
                                         std::pair(3, "80x"), std::pair(3, "99999999999")));

TEST_F(SettingsWindow, EnterInAnInvalidBoxTellsWhatIsWrong)
{
    Open({ann});
    Enter(3, "65536");
    QTest::keyClick(&Field(3), Qt::Key_Return);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(Focus(), "txtField_3");
    EXPECT_EQ(Field(3).text(), "65536");
}

TEST_F(SettingsWindow, TheFirstNewProfileHasThePortAndNoServer)
{
    Open({});
    Click("cmdAddNew");
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), "New User Profile 1");
    EXPECT_THAT(Fields(), ElementsAre("New User Profile 1", "", "", "48051"));
    EXPECT_EQ(window->GetSelectedProfile()->UniqueID, "{ID-1}");
}

TEST_F(SettingsWindow, ANewProfileTakesTheServerOfTheSelectedOne)
{
    Open({ann, bob}, 1);
    Click("cmdAddNew");
    EXPECT_EQ(List().currentRow(), 2);
    EXPECT_THAT(Fields(), ElementsAre("New User Profile 3", "", "relay.example", "48051"));
}

TEST_F(SettingsWindow, ANewProfileTakesTheServerOfTheLastIfNoneIsSelected)
{
    Open({ann, bob}, 0);
    Click("cmdAddNew");
    EXPECT_THAT(Fields(), ElementsAre("New User Profile 3", "", "192.0.2.7", "4000"));
}

TEST_F(SettingsWindow, TheNameOfANewProfileIsEditedInPlace)
{
    Open({ann}, 1, true);
    EXPECT_THAT(Rows(), SizeIs(2));
    Rename("  Zoe ");
    EXPECT_THAT(Rows(), ElementsAre("Ann", "Zoe"));
    EXPECT_EQ(Field(0).text(), "Zoe");
    EXPECT_EQ(window->GetLocalProfileCollection()[1].UserName, "Zoe");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(SettingsWindow, AddingByTheAccessKeyKeepsTheNameThatIsBeingTyped)
{
    Open({ann});
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    Editor()->selectAll();
    QTest::keyClicks(Editor(), "Zoe");
    QTest::keyClick(Editor(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Rows() == QStringList{"Zoe", "New User Profile 2"}; }));
    EXPECT_EQ(window->GetLocalProfileCollection()[0].UserName, "Zoe");
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), "New User Profile 2");
}

TEST_F(SettingsWindow, RenamingToBlanksKeepsTheOldName)
{
    Open({ann});
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_F2);
    Rename("   ");
    EXPECT_THAT(Rows(), ElementsAre("Ann"));
    EXPECT_EQ(Field(0).text(), "Ann");
    EXPECT_EQ(window->GetLocalProfileCollection()[0], ann);
}

TEST_F(SettingsWindow, EscapeEndsTheEditingOfARowOnly)
{
    Open({ann});
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), "Other");
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
    EXPECT_THAT(Rows(), ElementsAre("Ann"));
}

TEST_F(SettingsWindow, DeletingSelectsTheRowNowAtThatPlace)
{
    const CPipeProfile zoe{"Zoe", "z", "s", 1, "{ZOE}"};
    Open({ann, bob, zoe}, 2);
    Click("cmdDelete");
    EXPECT_THAT(Rows(), ElementsAre("Ann", "Zoe"));
    EXPECT_EQ(window->GetSelectedProfile(), zoe);
    Click("cmdDelete");
    EXPECT_EQ(window->GetSelectedProfile(), ann);
    Click("cmdDelete");
    EXPECT_THAT(window->GetLocalProfileCollection(), IsEmpty());
    EXPECT_FALSE(Find<QPushButton>("cmdDelete").isEnabled());
    Click("cmdSave");
    EXPECT_TRUE(window->DidSaveChanges());
}

TEST_F(SettingsWindow, AnInvalidProfileCanBeDeletedByItsAccessKey)
{
    Open({ann, bob});
    Enter(1, "");
    QTest::keyClick(&Field(1), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Rows() == QStringList{"Bob"}; }));
}

TEST_F(SettingsWindow, TabGoesThroughTheControlsInReadingOrder)
{
    Open({ann});
    List().setFocus();
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        order.append(Focus());
    }
    EXPECT_THAT(order, ElementsAre("cmdAddNew", "cmdDelete", "txtField_0", "txtField_1", "txtField_2", "txtField_3",
                                   "cmdSave", "cmdCancel"));
}

}  // namespace
}  // namespace fenrik
