#include "commands/frmSpecialCommand.h"

#include "commands/CommandsHost.h"
#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "platform/Boxes.h"
#include "shared/ErrorReporter.h"
#include "shared/TextFormat.h"

#include "ui_frmSpecialCommand.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

namespace fenrik {

namespace {

void Fill(QComboBox& list, const std::vector<SpecialCommandMessage::Entry>& entries)
{
    list.clear();
    for (const auto& entry : entries)
        list.addItem(entry.text, entry.code);
}

}  // namespace

frmSpecialCommand::frmSpecialCommand(const CommandsServices& services, CSpecialCommand* special,
                                     const CMessage& message, QWidget* parent)
    : QDialog(parent), mServices(services), mMessage(special, message, services.system.SelectedNodeNumber()),
      mMount(services.host, services.system), mUi(std::make_unique<Ui::frmSpecialCommand>())
{
    mUi->setupUi(this);
    SetUpNode();
    SetUpActions();
    ShowNames();
    ShowSpecifics();
    ShowNode();
    EnableInput();
    for (QWidget* widget : {static_cast<QWidget*>(mUi->lblName), static_cast<QWidget*>(mUi->cmbName),
                            static_cast<QWidget*>(mUi->lblState), static_cast<QWidget*>(mUi->cmbState)})
        widget->setVisible(mMessage.IsSpecial());
}

frmSpecialCommand::~frmSpecialCommand()
{
    // While it is still whole: hidden by the base class, the fields would say that they were left to what is gone.
    hide();
}

void frmSpecialCommand::SetUpNode()
{
    for (int number = 1; number <= mServices.system.NodesInSystem(); ++number)
        mUi->cmbNode->addItem(QString::number(number));
    mUi->cmbNode->setCompleter(nullptr);  // it would put more than what is typed into the field
    static const QRegularExpression kDigits(QStringLiteral("[0-9]{0,5}"));
    mUi->cmbNode->setValidator(new QRegularExpressionValidator(kDigits, this));
}

void frmSpecialCommand::SetUpActions()
{
    connect(mUi->cmbName, &QComboBox::activated, this,
            [this](int row) { ChooseItem(mUi->cmbName->itemData(row).toInt()); });
    connect(mUi->cmbState, &QComboBox::activated, this,
            [this](int row) { ChooseItem(mUi->cmbState->itemData(row).toInt()); });
    connect(mUi->cmbNode, &QComboBox::activated, this, &frmSpecialCommand::TakeNode);
    connect(mUi->cmbNode->lineEdit(), &QLineEdit::editingFinished, this, &frmSpecialCommand::TakeNode);
    connect(mUi->bSend, &QPushButton::clicked, this, &frmSpecialCommand::Send);
    connect(mUi->bCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmSpecialCommand::ShowNames()
{
    Fill(*mUi->cmbName, mMessage.Names());
    mUi->cmbName->setCurrentIndex(
        mUi->cmbName->findText(mMessage.SelectedName(), Qt::MatchFixedString | Qt::MatchCaseSensitive));
}

void frmSpecialCommand::ShowSpecifics()
{
    Fill(*mUi->cmbState, mMessage.Specifics());
    mUi->cmbState->setCurrentIndex(mUi->cmbState->findData(mMessage.SelectedCode()));
    mUi->lblHint->setText(mMessage.Hint());
    mUi->lblHint->setVisible(!mMessage.Hint().isEmpty());
}

void frmSpecialCommand::ShowNode()
{
    if (mMessage.TakesNode())
        mUi->cmbNode->setEditText(QString::number(mMessage.Node()));
    else
        mUi->cmbNode->clearEditText();
}

void frmSpecialCommand::EnableInput()
{
    const bool open = mServices.host.PortOpenForTx() && !mSending;
    mUi->bSend->setEnabled(open);
    mUi->cmbName->setEnabled(open);
    mUi->cmbState->setEnabled(open && mUi->cmbState->count() > 1);
    mUi->cmbNode->setEnabled(open && mMessage.TakesNode());
    mUi->lblNode->setEnabled(mMessage.TakesNode());
}

void frmSpecialCommand::ChooseItem(std::int32_t code)
{
    mMessage.Select(code);
    ShowSpecifics();
    EnableInput();
}

void frmSpecialCommand::TakeNode()
{
    if (!mMessage.TakesNode())
        return;
    mMessage.SetNode(int(Val(mUi->cmbNode->currentText())));
    ShowNode();
}

void frmSpecialCommand::Send()
{
    if (mSending || mClosed)
        return;
    TakeNode();
    const int node = TargetNode();
    mSending = true;
    Guarded(mServices.errors, "frmSpecialCommand:bSend:Click", [this, node] {
        if (IsSure(node) && MayMount(node)) {
            SendToNode(node);
            return;
        }
        mUi->cmbNode->setFocus();
        mUi->cmbNode->lineEdit()->selectAll();
    });
    mSending = false;
    unsetCursor();
    EnableInput();
    if (mUi->bCancel->hasFocus())
        mUi->bSend->setFocus();  // sending took it from whatever had it, and left only the way out
    if (mClosed)
        PutMountBack();
}

void frmSpecialCommand::SendToNode(int node)
{
    EnableInput();
    setCursor(Qt::WaitCursor);
    if (NeedsMount(node))
        mMount.Mount(node);
    // Closing the window while it waited for the mount takes the message back.
    if (!mClosed) {
        CMessage message = mMessage.Message();
        mServices.handler.SendMessage(message);
    }
}

int frmSpecialCommand::TargetNode() const
{
    if (mMessage.TakesNode())
        return mMessage.Node();
    // Whoever is mounted will do.
    const int mounted = mServices.system.MountedNodeNumber();
    return mounted != 0 ? mounted : mServices.system.SelectedNodeNumber();
}

bool frmSpecialCommand::IsSure(int node)
{
    const bool isKnown = node >= 1 && node <= mServices.system.NodesInSystem();
    if (isKnown || mSendsToUnknownNode || !mMessage.TakesNode())
        return true;
    mSendsToUnknownNode =
        Ask(QStringLiteral("Diagnostics is not aware of a Node %1 in the system.\n"
                           "Are you sure you want to send this message with Node %1 in the Data field?")
                .arg(node));
    return mSendsToUnknownNode;
}

bool frmSpecialCommand::NeedsMount(int node) const
{
    const bool hasTarget = mMessage.TakesNode() || node != 0;
    return mMessage.RequiresMount() && hasTarget && mServices.system.MountedNodeNumber() != node;
}

bool frmSpecialCommand::MayMount(int node)
{
    const int mounted = mServices.system.MountedNodeNumber();
    if (!NeedsMount(node) || mounted == 0)
        return true;
    return Ask(QStringLiteral("This message requires that the target Node %1 be mounted; however, Node %2 is currently "
                              "mounted.\n"
                              "Do you want to temporarily mount Node %1 in order to send this message?")
                   .arg(node)
                   .arg(mounted));
}

bool frmSpecialCommand::Ask(const QString& question)
{
    return mServices.boxes.MsgBox(question, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No,
                                  QStringLiteral("Send Special Command")) == QMessageBox::Yes;
}

void frmSpecialCommand::done(int result)
{
    if (mClosed)
        return;
    mClosed = true;
    QDialog::done(result);
    // The exchange that is under way comes to its end first: there is one reply at a time to wait for.
    if (!mSending)
        PutMountBack();
}

void frmSpecialCommand::PutMountBack()
{
    Guarded(mServices.errors, "frmSpecialCommand:Form:Unload", [this] { mMount.PutBack(); });
}

}  // namespace fenrik
