#pragma once

#include "diagnostics/NodeViewHost.h"

#include <QObject>
#include <QString>

#include <array>
#include <functional>

class QStackedWidget;

namespace fenrik {

class EventPump;
class MainToolbar;

/// The view in the window's upper area, `DisplayState`:
///
///   0 "Analog", 1 "States", 2 "OutputDiagnostics", 3 "FlashInfo", 4 "InputDiagnostics"
class ViewSwitch : public QObject {
    Q_OBJECT

public:
    static constexpr int kAnalog = 0;
    static constexpr int kStates = NodeViewHost::kViewStates;
    static constexpr int kOutputDiagnostics = 2;
    static constexpr int kFlashInfo = NodeViewHost::kViewFlashInfo;
    static constexpr int kInputDiagnostics = 4;
    static constexpr int kViews = 5;

    /// One view: the page that shows it, and what draws it when it is opened and when its content changed.
    struct View {
        QWidget* page = nullptr;
        std::function<void()> open;
        std::function<void(bool getNewInfo)> refresh;
    };

    ViewSwitch(QStackedWidget& pages, MainToolbar& toolbar, EventPump& pump, QObject* parent = nullptr);

    void setView(int state, const View& view) { mViews[std::size_t(state)] = view; }

    [[nodiscard]] int DisplayState() const { return mState; }

    /// Opens a view, if it isn't open already; values outside 0 to 4 are ignored.
    void setDisplayState(int state);

    /// Draws the open view anew; with `getNewInfo` from what the network says now.
    void RefreshCurrentFrame(bool getNewInfo);

    /// The toolbar's key of a view, empty for any other number; and the view of a key, -1 for any other text.
    [[nodiscard]] static QString GetDisplayStateName(int state);
    [[nodiscard]] static int StateOfName(const QString& key);

private:
    QStackedWidget& mPages;
    MainToolbar& mToolbar;
    EventPump& mPump;
    std::array<View, kViews> mViews;
    int mState = 0;
};

}  // namespace fenrik
