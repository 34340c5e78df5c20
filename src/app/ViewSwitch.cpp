#include "app/ViewSwitch.h"

#include "app/MainToolbar.h"
#include "shared/EventPump.h"
#include "widgets/WaitCursor.h"

#include <QStackedWidget>

namespace fenrik {

namespace {

constexpr const char* kNames[ViewSwitch::kViews] = {"Analog", "States", "OutputDiagnostics", "FlashInfo",
                                                    "InputDiagnostics"};

bool IsView(int state)
{
    return state >= 0 && state < ViewSwitch::kViews;
}

}  // namespace

ViewSwitch::ViewSwitch(QStackedWidget& pages, MainToolbar& toolbar, EventPump& pump, QObject* parent)
    : QObject(parent), mPages(pages), mToolbar(toolbar), mPump(pump)
{
    mToolbar.Press(GetDisplayStateName(mState));
}

QString ViewSwitch::GetDisplayStateName(int state)
{
    return IsView(state) ? QString::fromLatin1(kNames[state]) : QString();
}

int ViewSwitch::StateOfName(const QString& key)
{
    for (int state = 0; state < kViews; ++state) {
        if (key == QLatin1String(kNames[state]))
            return state;
    }
    return -1;
}

void ViewSwitch::setDisplayState(int state)
{
    if (state == mState || !IsView(state))
        return;
    const WaitCursor hourglass;
    mState = state;
    mPump.Once();
    if (mPump.Stopped() || mState != state)
        return;  // closed, or another view was opened meanwhile
    mToolbar.Press(GetDisplayStateName(state));
    const View& view = mViews[std::size_t(state)];
    if (view.page)
        mPages.setCurrentWidget(view.page);
    if (view.open)
        view.open();
}

void ViewSwitch::RefreshCurrentFrame(bool getNewInfo)
{
    const View& view = mViews[std::size_t(mState)];
    if (!view.refresh)
        return;
    const WaitCursor hourglass;
    view.refresh(getNewInfo);
}

}  // namespace fenrik
