#include "legacy/FrmDiag98.h"

#include "catalogue/FrmFileDialog.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/PicAnalogDisplay.h"
#include "legacy/LegacyHost.h"
#include "legacy/MessageList98.h"
#include "legacy/MiscPanel98.h"
#include "legacy/Toolbar98.h"
#include "legacy/ToolbarActions98.h"
#include "shared/Settings.h"
#include "widgets/MessageListView.h"
#include "widgets/StatusLine.h"

#include <QAction>
#include <QCloseEvent>
#include <QEvent>
#include <QSplitter>
#include <QVBoxLayout>

namespace fenrik {

namespace {

constexpr QSize kDefaultSize(844, 760);
constexpr int kPanelShare = 330;
constexpr int kListShare = 350;
constexpr int kMargin = 4;

}  // namespace

FrmDiag98::FrmDiag98(const LegacyServices& services, LegacyHost& host)
    : mServices(services), mHost(host), mProtocol(services.settings, services.boxes, services.errors),
      mSheets(services.asciiMap)
{
    setObjectName(QStringLiteral("FrmDiag98"));
    setWindowTitle(QStringLiteral("FenrikII Diagnostics"));
    SetUpBars();
    mSplitter = new QSplitter(Qt::Vertical);
    mSplitter->setObjectName(QStringLiteral("Splitter"));
    mSplitter->setChildrenCollapsible(false);
    setCentralWidget(mSplitter);
    SetUpPanels();
    SetUpMessages();
    mSplitter->setSizes({kPanelShare, kListShare});
    mSplitter->setStretchFactor(1, 1);
    resize(kDefaultSize);

    mConnection = std::make_unique<Connection98>(mServices, mProtocol, *mPanels, *mMessages,
                                                 static_cast<ConnectionHost98&>(*this));
    mActions = std::make_unique<ToolbarActions98>(mServices, *this, mHost);
    ShowStatus(QStringLiteral("Disconnected"));
    ShowDatabase();
}

FrmDiag98::~FrmDiag98() = default;

void FrmDiag98::SetUpBars()
{
    mToolbar = new Toolbar98;
    addToolBar(Qt::TopToolBarArea, mToolbar);
    setContextMenuPolicy(Qt::NoContextMenu);  // the bar can't be hidden by accident
    mStatus = new StatusLine;
    setStatusBar(mStatus);
    auto* quit = new QAction(tr("Quit"), this);
    quit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
    connect(quit, &QAction::triggered, this, &QWidget::close);
    addAction(quit);
}

void FrmDiag98::SetUpPanels()
{
    auto* area = new QWidget;
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(kMargin, kMargin, kMargin, 0);
    auto* analog = new PicAnalogDisplay(mSheets);
    auto* misc = new MiscPanel98(mSheets);
    layout->addWidget(analog, 1);
    layout->addWidget(misc);
    mSplitter->addWidget(area);
    mGraphics = std::make_unique<Graphics>(analog->Face());
    mPanels = std::make_unique<MAF98>(misc->Face(), *mGraphics, mProtocol.Messages());
    mGreeting = std::make_unique<Greeting98>(*mGraphics, mServices.pump, mServices.version);
}

void FrmDiag98::SetUpMessages()
{
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(kMargin, 0, kMargin, kMargin);
    mMessages = new MessageList98(this);
    mList = new MessageListView;
    mList->setObjectName(QStringLiteral("ListView98"));
    mList->setAccessibleName(tr("Messages"));
    mList->setModel(mMessages);
    mList->SetEmptyText(tr("No messages yet. Press \"Connect\" (Ctrl+K) to see the traffic of the network."));
    // Queued, so that a batch of lines is shown at once and never inside the code that adds them.
    connect(mMessages, &MessageLines::FlushDue, mList, &MessageListView::Flush, Qt::QueuedConnection);
    layout->addWidget(mList);
    mSplitter->addWidget(area);
}

void FrmDiag98::ChooseDatabase()
{
    FrmFileDialog(mServices.settings, mServices.programFolder, mServices.boxes, &Protocol98::Complaint,
                  VolumesOfThisComputer(), this)
        .exec();
    ShowDatabase();
}

void FrmDiag98::ShowDatabase()
{
    setMsg(mProtocol.IsChosen() ? QStringLiteral("Database: %1").arg(mServices.settings.DatabaseName) : QString());
}

void FrmDiag98::ShowConnected(bool connected)
{
    mToolbar->ShowConnected(connected);
    if (connected)
        ShowDatabase();
}

void FrmDiag98::ShowStatus(const QString& text)
{
    mStatus->setStatus(text);
}

void FrmDiag98::setMsg(const QString& text)
{
    mStatus->setMsg(text);
}

bool FrmDiag98::event(QEvent* event)
{
    // Later, as the greeting delivers events.
    if (event->type() == QEvent::WindowActivate)
        QMetaObject::invokeMethod(
            this, [this] { mGreeting->Play(); }, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

void FrmDiag98::closeEvent(QCloseEvent* event)
{
    mConnection->Disconnect();
    event->accept();
    mHost.SaveAndEnd();
}

}  // namespace fenrik
