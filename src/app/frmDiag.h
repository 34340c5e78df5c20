#pragma once

#include "app/Services.h"

#include <QMainWindow>

#include <memory>

class QSplitter;
class QStackedWidget;

namespace fenrik {

class Composer;
class CSystem;
class DiagHub;
class DiagPanels;
class MainMenus;
class MainToolbar;
class MenuActions;
class MessageListModel;
class MessageListView;
class NodeBars;
class ProgramHost;
class StatusLine;
class ToolbarActions;
struct AsciiMap;

/// The main window of Fenrik 2000. Lays the parts out and owns them; what they do is the hub's and its helpers' matter.
///
/// From top to bottom: menu bar, toolbar, node bars; in a splitter the view area with the panel beside it, over the
/// message list and the composer; the status line.
class frmDiag : public QMainWindow {
    Q_OBJECT

public:
    frmDiag(const Services& services, const AsciiMap& asciiMap, ProgramHost& program);
    ~frmDiag() override;

    [[nodiscard]] CSystem& System();
    [[nodiscard]] DiagHub& Hub() { return *mHub; }

    void setStatus(const QString& text);  ///< txtStatus
    void setMsg(const QString& text);     ///< txtMsg
    void PopulatecboCategoryList(const QString& hiddenCategory);

    /// The list, or the label that stands in its place while too many messages wait.
    void ShowMessageList(bool visible);

    // The parts, for the hub.
    [[nodiscard]] MainToolbar& Toolbar() { return *mToolbar; }
    [[nodiscard]] MainMenus& Menus() { return *mMenus; }
    [[nodiscard]] NodeBars& Nodes() { return *mNodeBars; }
    [[nodiscard]] StatusLine& Status() { return *mStatus; }
    [[nodiscard]] QStackedWidget& ViewPages() { return *mViewPages; }
    [[nodiscard]] DiagPanels& Panels() { return *mPanels; }
    [[nodiscard]] MessageListModel& Messages() { return *mMessages; }
    [[nodiscard]] MessageListView& MessageList() { return *mMessageList; }
    [[nodiscard]] Composer& CommandComposer() { return *mComposer; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void SetUpBars();
    void SetUpViews(const AsciiMap& asciiMap);
    void SetUpMessages();
    void SetUpActions();
    void ShowListMenu(const QPoint& place);
    void TakeLineOver(int row);

    const Services mServices;  // the parts below refer to this one
    ProgramHost& mProgram;
    MainToolbar* mToolbar = nullptr;
    MainMenus* mMenus = nullptr;
    NodeBars* mNodeBars = nullptr;
    StatusLine* mStatus = nullptr;
    QSplitter* mSplitter = nullptr;
    QStackedWidget* mViewPages = nullptr;
    QStackedWidget* mListPages = nullptr;
    DiagPanels* mPanels = nullptr;
    MessageListModel* mMessages = nullptr;
    MessageListView* mMessageList = nullptr;
    Composer* mComposer = nullptr;
    std::unique_ptr<DiagHub> mHub;
    std::unique_ptr<ToolbarActions> mToolbarActions;
    std::unique_ptr<MenuActions> mMenuActions;
};

}  // namespace fenrik
