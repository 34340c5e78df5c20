#include "app/frmDiag.h"

#include "app/Composer.h"
#include "app/DiagHub.h"
#include "app/DiagPanels.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/MenuActions.h"
#include "app/NodeBars.h"
#include "app/ProgramHost.h"
#include "app/ToolbarActions.h"
#include "app/messages/MessageListModel.h"
#include "platform/VersionInfo.h"
#include "shared/CommandTable.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"
#include "widgets/MessageListView.h"
#include "widgets/StatusLine.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace fenrik {

namespace {

constexpr QSize kDefaultSize(1280, 800);
constexpr int kViewShare = 420;
constexpr int kListShare = 300;
constexpr int kMargin = 4;

}  // namespace

frmDiag::frmDiag(const Services& services, const AsciiMap& asciiMap, ProgramHost& program)
    : mServices(services), mProgram(program)
{
    setObjectName(QStringLiteral("frmDiag"));
    setWindowTitle(VersionInfo::Title());
    SetUpBars();
    mSplitter = new QSplitter(Qt::Vertical);
    mSplitter->setObjectName(QStringLiteral("Splitter"));
    mSplitter->setChildrenCollapsible(false);
    setCentralWidget(mSplitter);
    SetUpViews(asciiMap);
    SetUpMessages();
    mSplitter->setSizes({kViewShare, kListShare});
    mSplitter->setStretchFactor(1, 1);
    resize(kDefaultSize);

    mHub = std::make_unique<DiagHub>(mServices, *this, mProgram);
    mComposer->Attach(*mHub);
    mPanels->Attach(*mHub, *mMenus->Menu(QStringLiteral("mnuDiag")));
    SetUpActions();
    mHub->Load();
}

frmDiag::~frmDiag() = default;

void frmDiag::SetUpBars()
{
    mMenus = new MainMenus(*menuBar(), mServices.version.IsDebug(), this);
    mToolbar = new MainToolbar;
    addToolBar(Qt::TopToolBarArea, mToolbar);
    mNodeBars = new NodeBars(this);
    addToolBarBreak();
    addToolBar(Qt::TopToolBarArea, mNodeBars->First());
    addToolBarBreak();
    addToolBar(Qt::TopToolBarArea, mNodeBars->Second());
    setContextMenuPolicy(Qt::NoContextMenu);  // the bars can't be hidden by accident
    mStatus = new StatusLine;
    setStatusBar(mStatus);
}

void frmDiag::SetUpViews(const AsciiMap& asciiMap)
{
    auto* area = new QWidget;
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(kMargin, kMargin, kMargin, 0);
    mViewPages = new QStackedWidget;
    mViewPages->setObjectName(QStringLiteral("ViewPages"));
    mPanels = new DiagPanels(mServices, asciiMap, *mViewPages, this);
    layout->addWidget(mViewPages, 1);
    layout->addWidget(mPanels->Panel());
    mSplitter->addWidget(area);
}

void frmDiag::SetUpMessages()
{
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(kMargin, 0, kMargin, kMargin);
    mListPages = new QStackedWidget;
    mMessages = new MessageListModel(this);
    mMessages->SetCompactList(mServices.settings.CompactList);
    mMessages->SetHexData(mServices.settings.HexData);
    mMessageList = new MessageListView;
    mMessageList->setObjectName(QStringLiteral("lvMessages"));
    mMessageList->setAccessibleName(tr("Messages"));
    mMessageList->setModel(mMessages);
    mMessageList->SetEmptyText(tr("No messages yet. Press \"Connect\" (Ctrl+K) to see the traffic of the network."));
    mMessageList->setContextMenuPolicy(Qt::CustomContextMenu);
    mListPages->addWidget(mMessageList);
    auto* updating = new QLabel(tr("Updating message list..."));
    updating->setObjectName(QStringLiteral("lblUpdatingMessageList"));
    updating->setAlignment(Qt::AlignCenter);
    mListPages->addWidget(updating);
    mComposer = new Composer(mServices);
    layout->addWidget(mListPages, 1);
    layout->addWidget(mComposer);
    mSplitter->addWidget(area);
}

void frmDiag::SetUpActions()
{
    mToolbarActions = std::make_unique<ToolbarActions>(mServices, *mHub, *this, mProgram);
    mMenuActions = std::make_unique<MenuActions>(mServices, *mHub, *this, mProgram, *mToolbarActions);
    // Queued, so that a batch of lines is shown at once and never inside the code that adds them.
    connect(mMessages, &MessageListModel::FlushDue, mMessageList, &MessageListView::Flush, Qt::QueuedConnection);
    connect(mMessageList, &MessageListView::LineChosen, this, &frmDiag::TakeLineOver);
    connect(mMenus->Menu(QStringLiteral("mnuDiag")), &QMenu::aboutToShow, this,
            [this] { mMenuActions->ShowDiagChecks(); });
    connect(mMessageList, &QWidget::customContextMenuRequested, this, &frmDiag::ShowListMenu);
}

CSystem& frmDiag::System()
{
    return mHub->System();
}

void frmDiag::setStatus(const QString& text)
{
    mStatus->setStatus(text);
}

void frmDiag::setMsg(const QString& text)
{
    mStatus->setMsg(text);
}

void frmDiag::PopulatecboCategoryList(const QString& hiddenCategory)
{
    mComposer->PopulatecboCategoryList(hiddenCategory);
}

void frmDiag::ShowMessageList(bool visible)
{
    mListPages->setCurrentIndex(visible ? 0 : 1);
}

void frmDiag::ShowListMenu(const QPoint& place)
{
    mMenuActions->ShowListChecks();
    mMenus->Menu(QStringLiteral("mnuListView"))->popup(mMessageList->viewport()->mapToGlobal(place));
}

void frmDiag::TakeLineOver(int row)
{
    const MessageRecord& line = mMessages->Line(row);
    CMessage message;
    message.Command = line.command;
    message.State = line.On() ? 1 : 0;
    message.extended = line.ThreeWay() ? 1 : 0;
    message.data = line.data;
    if (!mComposer->ShowMessage(message))
        setMsg(QStringLiteral("\"%1\" is in a category that is not listed.")
                   .arg(mServices.commands.FriendlyName(message.Command)));
}

void frmDiag::keyReleaseEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat())
        return;
    if (event->key() == Qt::Key_Escape)
        mHub->RequestCancel();
    else if (mHub->State().Ready())
        mToolbar->ClickByFunctionKey(event->key());
    QMainWindow::keyReleaseEvent(event);
}

void frmDiag::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    mPanels->TypeBannerOnce();
}

void frmDiag::closeEvent(QCloseEvent* event)
{
    if (!mHub->PrepareToClose()) {
        event->ignore();
        return;
    }
    event->accept();
    mProgram.SaveAndEnd();
}

}  // namespace fenrik
