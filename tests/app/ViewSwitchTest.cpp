#include "app/ViewSwitch.h"

#include "app/MainToolbar.h"
#include "support/FakeClock.h"
#include "support/Printers.h"
#include "support/ScriptedPump.h"

#include <QAction>
#include <QGuiApplication>
#include <QStackedWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ViewSwitchTest : public testing::Test {
protected:
    ViewSwitchTest()
    {
        for (int state = 0; state < ViewSwitch::kViews; ++state) {
            auto* page = new QWidget;
            pages.addWidget(page);
            const std::string number = std::to_string(state);
            views.setView(
                state, {page, [this, number] { calls.push_back("open " + number); },
                        [this, number](bool fresh) { calls.push_back("refresh " + number + (fresh ? " anew" : "")); }});
        }
    }

    [[nodiscard]] QString Pressed() const
    {
        QStringList keys;
        for (int state = 0; state < ViewSwitch::kViews; ++state) {
            if (toolbar.Button(ViewSwitch::GetDisplayStateName(state))->isChecked())
                keys.append(ViewSwitch::GetDisplayStateName(state));
        }
        return keys.join(' ');
    }

    FakeClock clock;
    ScriptedPump pump{clock};
    QStackedWidget pages;
    MainToolbar toolbar;
    ViewSwitch views{pages, toolbar, pump};
    std::vector<std::string> calls;
};

TEST_F(ViewSwitchTest, EachStateHasItsKeyAndNoOtherNumberHasOne)
{
    const QStringList keys{"Analog", "States", "OutputDiagnostics", "FlashInfo", "InputDiagnostics"};
    for (int state = 0; state < ViewSwitch::kViews; ++state) {
        EXPECT_EQ(ViewSwitch::GetDisplayStateName(state), keys[state]);
        EXPECT_EQ(ViewSwitch::StateOfName(keys[state]), state);
    }
    EXPECT_EQ(ViewSwitch::GetDisplayStateName(5), "");
    EXPECT_EQ(ViewSwitch::GetDisplayStateName(-1), "");
    EXPECT_EQ(ViewSwitch::StateOfName("Connect"), -1);
}

TEST_F(ViewSwitchTest, TheFirstViewIsAnalog)
{
    EXPECT_EQ(views.DisplayState(), 0);
    EXPECT_EQ(Pressed(), "Analog");
}

TEST_F(ViewSwitchTest, OpeningAViewPressesItsButtonShowsItsPageAndDrawsIt)
{
    for (const int state : {1, 2, 3, 4, 0}) {
        calls.clear();
        views.setDisplayState(state);
        EXPECT_EQ(views.DisplayState(), state);
        EXPECT_EQ(Pressed(), ViewSwitch::GetDisplayStateName(state));
        EXPECT_EQ(pages.currentIndex(), state);
        EXPECT_THAT(calls, ElementsAre("open " + std::to_string(state)));
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "the pointer is normal again";
    }
}

TEST_F(ViewSwitchTest, TheOpenViewIsNotOpenedAgain)
{
    views.setDisplayState(2);
    calls.clear();
    views.setDisplayState(2);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ViewSwitchTest, NumbersOfNoViewAreIgnored)
{
    views.setDisplayState(5);
    views.setDisplayState(-1);
    EXPECT_EQ(views.DisplayState(), 0);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ViewSwitchTest, OnlyTheOpenViewIsRefreshed)
{
    views.setDisplayState(3);
    calls.clear();
    views.RefreshCurrentFrame(false);
    views.RefreshCurrentFrame(true);
    EXPECT_THAT(calls, ElementsAre("refresh 3", "refresh 3 anew"));
}

TEST_F(ViewSwitchTest, AViewOpenedWhileAnotherOpensStays)
{
    pump.After(0.0, [this] { views.setDisplayState(4); });
    views.setDisplayState(1);
    EXPECT_EQ(views.DisplayState(), 4);
    EXPECT_EQ(Pressed(), "InputDiagnostics");
    EXPECT_EQ(pages.currentIndex(), 4);
    EXPECT_THAT(calls, ElementsAre("open 4"));
}

TEST_F(ViewSwitchTest, AWindowThatClosesMeanwhileDrawsNothing)
{
    pump.After(0.0, [this] { pump.Stop(); });
    views.setDisplayState(1);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ViewSwitchTest, AViewWithoutADrawerOnlyShowsItsPage)
{
    auto* page = new QWidget;
    pages.addWidget(page);
    views.setView(2, {page, {}, {}});
    views.setDisplayState(2);
    views.RefreshCurrentFrame(true);
    EXPECT_EQ(pages.currentWidget(), page);
}

}  // namespace
}  // namespace fenrik
