#include "app/DiagPanels.h"

#include "app/DiagHub.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/Flash.h"
#include "diagnostics/FrameInputs.h"
#include "diagnostics/FrameOutputs.h"
#include "diagnostics/InputDiagnostics.h"
#include "diagnostics/OpenGraphics.h"
#include "diagnostics/OutputDiagnostics.h"
#include "diagnostics/PageArea.h"
#include "diagnostics/PicAnalogDisplay.h"
#include "diagnostics/PicMiscDisplay.h"
#include "diagnostics/States.h"
#include "link/CMsgHandler.h"
#include "platform/VersionInfo.h"

#include <QMenu>
#include <QStackedWidget>

namespace fenrik {

namespace {

constexpr int kNodeCollisions = 926;
constexpr int kValueReply = 950;

QStringList Banner(const VersionInfo& version)
{
    return OpenGraphics::BannerLines(version.GetVersionRelease(), version.Build(), version.IsBeta());
}

}  // namespace

DiagPanels::DiagPanels(const Services& services, const AsciiMap& asciiMap, QStackedWidget& pages, QObject* parent)
    : QObject(parent), mServices(services), mSheets(asciiMap)
{
    AddPages(pages);
    mGraphics = std::make_unique<Graphics>(mAnalogDisplay->Face());
    mAnalog = std::make_unique<Analog>(services.commands, *mGraphics);
    mMiscDisplay = new PicMiscDisplay(mSheets, [this] { return mHub ? mHub->System().NodesInSystem() : 0; });
    mMiscFace = std::make_unique<MiscFace>(*mMiscDisplay, services.clock, static_cast<NodeCountSource&>(*this));
    mMiscFace->setParent(this);
    mLoadshed = std::make_unique<Loadshed>(*mMiscFace);
    mMonitor = std::make_unique<CollisionMonitor>(static_cast<CollisionHost&>(*this), *mMiscFace, services.errors);
    mMonitor->setParent(this);
    mBanner = std::make_unique<OpenGraphics>(*mGraphics, Banner(services.version));
}

DiagPanels::~DiagPanels() = default;

void DiagPanels::AddPages(QStackedWidget& pages)
{
    mAnalogDisplay = new PicAnalogDisplay(mSheets);
    mFrameOutputs = new FrameOutputs;
    mFrameInputs = new FrameInputs;
    mOutputsPage = new PageArea(*mFrameOutputs);
    mInputsPage = new PageArea(*mFrameInputs);
    for (QWidget* page : std::initializer_list<QWidget*>{mAnalogDisplay, mOutputsPage, mInputsPage})
        pages.addWidget(page);
}

void DiagPanels::Attach(DiagHub& hub, QMenu& menu)
{
    mHub = &hub;
    mMiscDisplay->setMenu(&menu);
    NodeViewHost& host = *this;
    mStates = std::make_unique<States>(hub.System(), mServices.handler, mServices.commands, *mGraphics,
                                       mServices.errors, host);
    mFlash = std::make_unique<Flash>(hub.System(), mServices.handler, *mGraphics, mServices.errors, host);
    const auto showFlash = [this] { mFlash->DisplayFlashInfo(); };
    hub.Views().setView(ViewSwitch::kAnalog, {mAnalogDisplay, [this] { ShowAnalog(); }, {}});
    hub.Views().setView(ViewSwitch::kStates, {mAnalogDisplay, [this] { mStates->Open(); },
                                              [this](bool getNewInfo) { mStates->RefreshFrame(getNewInfo); }});
    hub.Views().setView(ViewSwitch::kFlashInfo, {mAnalogDisplay, showFlash, [showFlash](bool) { showFlash(); }});
    AttachPointViews();
}

void DiagPanels::AttachPointViews()
{
    OutputViewHost& host = *this;
    mOutputs =
        std::make_unique<OutputDiagnostics>(mHub->System(), mServices.commands, mServices.errors, host, *mFrameOutputs);
    mInputs =
        std::make_unique<InputDiagnostics>(mHub->System(), mServices.commands, mServices.errors, host, *mFrameInputs);
    const auto showOutputs = [this] { mOutputs->DisplayOutputsFrame(); };
    const auto showInputs = [this] { mInputs->DisplayInputsFrame(); };
    mHub->Views().setView(ViewSwitch::kOutputDiagnostics,
                          {mOutputsPage, showOutputs, [showOutputs](bool) { showOutputs(); }});
    mHub->Views().setView(ViewSwitch::kInputDiagnostics,
                          {mInputsPage, showInputs, [showInputs](bool) { showInputs(); }});
    mHub->State().AlsoDisableWhileBusy(mFrameOutputs);
    mHub->State().AlsoDisableWhileBusy(mFrameInputs);
}

QWidget* DiagPanels::Panel() const
{
    return mMiscDisplay;
}

void DiagPanels::SetCollisionMonitor(bool on)
{
    mMonitor->SetCollisionMonitor(on);
}

void DiagPanels::ShowAnalog()
{
    mGraphics->ClearFace();
    mAnalog->RedrawAnalog();
    if (mAnalog->Empty())
        mGraphics->PutTitleLines({QStringLiteral("No analog values heard yet")}, true, false);
}

void DiagPanels::UpdateAnalog(int command)
{
    const bool isOpen = mHub->Views().DisplayState() == ViewSwitch::kAnalog;
    if (isOpen && mAnalog->Empty())
        mGraphics->ClearFace();  // the words that stood for the empty view, or the banner
    mAnalog->UpdateAnalog(command, isOpen);
}

void DiagPanels::ResetPanels()
{
    mAnalog->ResetAnalogSlots();
    mStates->ClearFaults();
    if (mHub->Views().DisplayState() == ViewSwitch::kAnalog)
        ShowAnalog();
}

void DiagPanels::UpdateLoadShed(int data)
{
    mLoadshed->UpdateLoadShed(data, mHub->System().NodesInSystem());
}

void DiagPanels::ResetLoadShed()
{
    mLoadshed->ResetLoadShedArray();
    ShowLoadShed();
}

void DiagPanels::ShowLoadShed()
{
    mMiscDisplay->NodesChanged();
    mLoadshed->ShowLoadShed(mHub->System().NodesInSystem());
}

void DiagPanels::ClearPanel()
{
    mMiscFace->ClearPanel();
}

void DiagPanels::Clear()
{
    mMiscFace->ClearPanel();
    mMiscFace->RunOutLamps();
}

void DiagPanels::TypeBannerOnce()
{
    mBanner->Start();
}

std::optional<int> DiagPanels::AskNodeCount()
{
    CMessage question;
    question.Command = kNodeCollisions;
    const auto reply = mServices.handler.SendMessageGetReply(question, kValueReply);
    return reply ? std::optional(int(reply->data)) : std::nullopt;
}

int DiagPanels::DisplayState() const
{
    return mHub->Views().DisplayState();
}

void DiagPanels::VerifyNode(CNode& node)
{
    mHub->Discovery().VerifyNode(&node, false);
}

bool DiagPanels::PortOpenForTx() const
{
    return mHub->Ports().PortOpenForTx();
}

QString DiagPanels::FaultText(int node, int output) const
{
    const bool isInTable = node >= 1 && node <= FaultTable::kNodes && output >= 1 && output <= FaultTable::kOutputs;
    return isInTable ? mStates->FaultText().At(node, output) : QString();
}

void DiagPanels::Compose(int command, bool on)
{
    mHub->Compose(command, on);
}

bool DiagPanels::VerifyNode(CNode* node, bool force)
{
    return mHub->Discovery().VerifyNode(node, force);
}

bool DiagPanels::UIReady() const
{
    return mHub->State().Ready();
}

void DiagPanels::SetUIState(int state)
{
    mHub->State().SetUIState(state);
}

void DiagPanels::setTxtMsg(const QString& text)
{
    mHub->ShowText(text);
}

int DiagPanels::MountedNodeNumber() const
{
    return mHub->System().MountedNodeNumber();
}

void DiagPanels::setCollisionPressed(bool pressed)
{
    mHub->PressCollision(pressed);
}

}  // namespace fenrik
