#include "remote/frmPipeUsersDialog.h"

#include "RemoteWindowFixture.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UsersWindow : public RemoteWindowTest {
protected:
    UsersWindow() { Open(window); }

    static UserList Users(const std::vector<std::pair<int, const char*>>& users)
    {
        UserList list;
        for (const auto& [id, name] : users)
            list.Add({QLatin1String(name), QString::number(id), "192.0.2.1", " "});
        return list;
    }
    [[nodiscard]] QListWidget& List() const { return Find<QListWidget>(window, "lstUsers"); }
    [[nodiscard]] QStringList Names() const
    {
        QStringList names;
        for (int row = 0; row < List().count(); ++row)
            names.append(List().item(row)->text());
        return names;
    }
    [[nodiscard]] QString Instructions() const { return Find<QLabel>(window, "lblInstructions").text(); }
    [[nodiscard]] bool CanConnect() const { return Find<QPushButton>(window, "cmdConnect").isEnabled(); }
    void ClickRow(int row) const
    {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(List().item(row)).center());
    }

    static constexpr int kOwn = 7;
    frmPipeUsersDialog window;
};

TEST_F(UsersWindow, WaitsForAListAtFirst)
{
    EXPECT_EQ(window.windowTitle(), "Remote Diagnostics - Active Users");
    EXPECT_EQ(Instructions(), "Retrieving a list of active Users; Please wait...");
    EXPECT_FALSE(CanConnect());
    EXPECT_EQ(window.SelectedClientID(), -1);
    EXPECT_EQ(window.SelectedUserName(), "");
}

TEST_F(UsersWindow, ListsEverybodyButTheToolItself)
{
    window.SetUserList(Users({{3, " Ann "}, {kOwn, "Me"}, {9, "Bob"}}), kOwn);
    EXPECT_THAT(Names(), ElementsAre("Ann", "Bob"));
    EXPECT_EQ(Instructions(), "Please select the User to whom you would like to connect:");
    EXPECT_FALSE(CanConnect());
}

TEST_F(UsersWindow, AListOfOnlyTheToolItselfIsNobody)
{
    window.SetUserList(Users({{kOwn, "Me"}}), kOwn);
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_EQ(Instructions(), "No Users are currently logged on the Remote Diagnostics network.");
    EXPECT_FALSE(CanConnect());
}

TEST_F(UsersWindow, ConnectGivesTheSelectedUserAndHides)
{
    window.SetUserList(Users({{3, "Ann"}, {9, "Bob"}}), kOwn);
    ClickRow(1);
    EXPECT_TRUE(CanConnect());
    Click(window, "cmdConnect");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.SelectedClientID(), 9);
    EXPECT_EQ(window.SelectedUserName(), "Bob");
}

TEST_F(UsersWindow, AUserIsChosenByKeysAlone)
{
    window.SetUserList(Users({{3, "Ann"}, {9, "Bob"}}), kOwn);
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Down);
    QTest::keyClick(&List(), Qt::Key_Down);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.SelectedClientID(), 9);
}

TEST_F(UsersWindow, CancelSelectsNobodyAndHides)
{
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    ClickRow(0);
    Click(window, "cmdCancel");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.SelectedClientID(), -1);
    EXPECT_FALSE(CanConnect());
}

TEST_F(UsersWindow, EscapeAndClosingAreCancel)
{
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    ClickRow(0);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(window.SelectedClientID(), -1);
    window.show();
    ClickRow(0);
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.SelectedClientID(), -1);
}

TEST_F(UsersWindow, AUserAtTheSameRowOfANewListStaysSelected)
{
    window.SetUserList(Users({{3, "Ann"}, {9, "Bob"}}), kOwn);
    ClickRow(1);
    window.SetUserList(Users({{4, "Eve"}, {9, "Bob"}, {11, "Zoe"}}), kOwn);
    EXPECT_EQ(window.SelectedClientID(), 9);
    EXPECT_TRUE(CanConnect());
}

TEST_F(UsersWindow, AUserAtAnotherRowOfANewListLosesTheSelection)
{
    window.SetUserList(Users({{3, "Ann"}, {9, "Bob"}}), kOwn);
    ClickRow(1);
    window.SetUserList(Users({{9, "Bob"}, {3, "Ann"}}), kOwn);
    EXPECT_EQ(window.SelectedClientID(), -1);
    EXPECT_FALSE(CanConnect());
}

TEST_F(UsersWindow, NobodySelectedStaysNobodyInANewList)
{
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    EXPECT_EQ(window.SelectedClientID(), -1);
}

TEST_F(UsersWindow, APipeHidesItAndKeepsTheChoice)
{
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    ClickRow(0);
    for (const int state : {RemoteStates::kConnected, RemoteStates::kLoggedOn}) {
        window.setState(state);
        EXPECT_TRUE(window.isVisible());
    }
    window.setState(RemoteStates::kWaiting);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.SelectedClientID(), 3);
}

TEST_F(UsersWindow, TheEndOfTheConnectionHidesItAndForgetsTheList)
{
    window.SetUserList(Users({{3, "Ann"}}), kOwn);
    window.setState(RemoteStates::kDisconnected);
    EXPECT_FALSE(window.isVisible());
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_EQ(Instructions(), "Retrieving a list of active Users; Please wait...");
}

}  // namespace
}  // namespace fenrik
