#include "app/OperatorCommands.h"

#include "app/NodeDiscovery.h"
#include "app/PortState.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "catalogue/SpecialCommands.h"
#include "commands/frmCmdQry.h"
#include "commands/frmSpecialCommand.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

namespace {

constexpr int kSwitchAddress = 969;
constexpr int kAssignEatonE33 = 161;  // packed key of the item: code 40, three-way

}  // namespace

OperatorCommands::OperatorCommands(const Services& services, const PortState& ports, CSystem& system,
                                   NodeDiscovery& discovery, UiState& ui, QWidget& window)
    : mServices(services), mPorts(ports), mSystem(system), mDiscovery(discovery), mUi(ui), mWindow(window)
{
}

void OperatorCommands::OpenSpecialCommand(const CMessage& message)
{
    const BusyMeanwhile busy(mUi);
    Guarded(mServices.errors, "frmSpecialCommand:Form:Load", [this, &message] {
        frmSpecialCommand window({mServices.handler, mSystem, mServices.boxes, mServices.errors, *this},
                                 mServices.specials.Find(message.Command), message, &mWindow);
        window.exec();
    });
}

void OperatorCommands::AssignEatonE33()
{
    Guarded(mServices.errors, "frmmain:mnuAssignEatonE33:Click", [this] {
        OpenSpecialCommand(
            SpecialCommandMessage::OfItem(mServices.specials.Find(kSwitchAddress), kSwitchAddress, kAssignEatonE33));
    });
}

void OperatorCommands::OpenCommandQuery()
{
    const BusyMeanwhile busy(mUi);
    frmCmdQry window(mServices.handler, mSystem, mServices.commands, *this, mServices.errors, &mWindow);
    window.exec();
}

bool OperatorCommands::PortOpenForTx() const
{
    return mPorts.PortOpenForTx();
}

bool OperatorCommands::MountNode(int node)
{
    return mDiscovery.MountNode(node);
}

bool OperatorCommands::UnmountNode(int node)
{
    return mDiscovery.UnmountNode(node);
}

}  // namespace fenrik
