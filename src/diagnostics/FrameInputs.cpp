#include "diagnostics/FrameInputs.h"

#include "ui_FrameInputs.h"

namespace fenrik {

FrameInputs::FrameInputs(QWidget* parent)
    : PointFrame(QStringLiteral("Input"), parent), mUi(std::make_unique<Ui::FrameInputs>())
{
    mUi->setupUi(this);
    SetUpPoints({mUi->lblNoInputs, mUi->pnlInputs, mUi->lblNotDownloaded, mUi->tvInputs});
    Clear();
}

FrameInputs::~FrameInputs() = default;

void FrameInputs::ShowDetails(const InputDetails& details)
{
    mUi->lblCommandName->setText(details.commandName);
    mUi->lblSwitchType->setText(details.switchType);
    mUi->lblOnState->setText(details.onState);
    mUi->lbl3Way->setText(details.threeWay);
}

}  // namespace fenrik
