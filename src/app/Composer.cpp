#include "app/Composer.h"

#include "app/DataValidator.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "catalogue/SpecialCommands.h"
#include "link/CMsgHandler.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "platform/SubscriptOutOfRange.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"
#include "shared/TextFormat.h"

#include "ui_Composer.h"

#include <QKeyEvent>

#include <algorithm>

namespace fenrik {

namespace {

const QString kOn = QStringLiteral("On");
const QString kOff = QStringLiteral("Off");
const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

constexpr int kInternalRank = 99;
constexpr int kLargestByte = 255;

std::uint8_t GetStateValue(const QString& caption)
{
    return caption.compare(kOn, Qt::CaseInsensitive) == 0 ? 1 : 0;
}

std::uint8_t GetExtendedValue(const QString& caption)
{
    return caption.compare(kTrue, Qt::CaseInsensitive) == 0 ? 1 : 0;
}

/// Keys of line editing that the toolbar has for itself, as Ctrl+K for "Connect".
bool IsEditorHabit(const QKeyEvent& event)
{
    constexpr int kHabits[] = {Qt::Key_D, Qt::Key_E, Qt::Key_H, Qt::Key_K, Qt::Key_U};
    return event.modifiers() == Qt::ControlModifier &&
           std::find(std::begin(kHabits), std::end(kHabits), event.key()) != std::end(kHabits);
}

}  // namespace

Composer::Composer(const Services& services, QWidget* parent)
    : QWidget(parent), mServices(services), mUi(std::make_unique<Ui::Composer>())
{
    mUi->setupUi(this);
    mUi->TxtData->setValidator(new DataValidator(this));
    mUi->TxtData->installEventFilter(this);
    mUi->CboCategory->installEventFilter(this);
    mUi->CboCommand->installEventFilter(this);
    SetUpButtons();
}

Composer::~Composer() = default;

QSize Composer::minimumSizeHint() const
{
    const int wider = std::max(mUi->commandLayout->minimumSize().width(), mUi->valueLayout->minimumSize().width());
    return {wider, QWidget::minimumSizeHint().height()};
}

void Composer::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int oneRow = mUi->commandLayout->minimumSize().width() + mUi->composerLayout->spacing() +
                       mUi->valueLayout->minimumSize().width();
    const auto direction = width() < oneRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (mUi->composerLayout->direction() == direction)
        return;
    mUi->composerLayout->setDirection(direction);
    updateGeometry();
}

void Composer::SetUpButtons()
{
    connect(mUi->CboCategory, &QComboBox::currentTextChanged, this, &Composer::ShowCategory);
    connect(mUi->cmdState, &QPushButton::clicked, this, [this] { Toggle(true); });
    connect(mUi->cmdExtended, &QPushButton::clicked, this, [this] { Toggle(false); });
    connect(mUi->cmdSend, &QPushButton::clicked, this, &Composer::Send);
    connect(mUi->TxtData, &QLineEdit::returnPressed, mUi->cmdSend, [this] {
        mUi->cmdSend->setFocus();
        mUi->cmdSend->click();
    });
}

bool Composer::eventFilter(QObject* watched, QEvent* event)
{
    const bool isField = watched == mUi->TxtData;
    // The lists would open on F4 and keep its release, which is the window's key for "Clear".
    if (event->type() == QEvent::KeyPress && !isField && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F4) {
        event->ignore();
        return true;
    }
    // The field would keep the release of every key, also of the window's function keys.
    if (event->type() == QEvent::KeyRelease && isField) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && isField && IsEditorHabit(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void Composer::PopulatecboCategoryList(const QString& hiddenCategory)
{
    const bool showInternal = mServices.settings.ShowFenrikInternal;
    const QString undefined = QLatin1String(CommandTable::kUndefinedCategory);
    QStringList categories;
    for (int number = 1; number < CommandTable::kSize; ++number) {
        const CommandEntry& entry = mServices.commands[number];
        if (entry.Category == undefined || categories.contains(entry.Category))
            continue;
        if (showInternal || (entry.Category != hiddenCategory && entry.CategoryRank < kInternalRank))
            categories.append(entry.Category);
    }
    if (mServices.settings.ListAllMsgs)
        categories.prepend(undefined);
    if (showInternal)
        categories.prepend(QLatin1String(kSendByte));

    const QSignalBlocker quiet(mUi->CboCategory);
    mUi->CboCategory->clear();
    mUi->CboCategory->addItems(categories);
    mUi->CboCategory->setCurrentIndex(categories.isEmpty() ? -1 : 0);
    ShowCategory(mUi->CboCategory->currentText());
}

void Composer::ShowCategory(const QString& category)
{
    const bool isByte = category == QLatin1String(kSendByte);
    mUi->CboCommand->clear();
    mUi->CboCommand->setEnabled(!isByte);
    mUi->cmdState->setEnabled(!isByte);
    mUi->cmdExtended->setEnabled(!isByte);
    if (isByte)
        return;
    QStringList names;
    for (int number = 1; number < CommandTable::kSize; ++number) {
        if (mServices.commands[number].Category == category)
            names.append(mServices.commands[number].Name);
    }
    mUi->CboCommand->addItems(names);
}

void Composer::Toggle(bool state)
{
    QPushButton* button = state ? mUi->cmdState : mUi->cmdExtended;
    const QString& on = state ? kOn : kTrue;
    const QString& off = state ? kOff : kFalse;
    button->setText(button->text() == on ? off : on);
}

void Composer::SetSendEnabled(bool enabled)
{
    mUi->cmdSend->setEnabled(enabled);
}

void Composer::Send()
{
    mHost->SetUIState(UiState::kBusy);
    Guarded(mServices.errors, "frmmain:cmdSend:Click", [this] {
        if (mUi->CboCategory->currentText() == QLatin1String(kSendByte))
            SendByte();
        else
            SendCommand();
        mHost->CommandSent();
        mHost->SelectLastLine();
    });
    mHost->SetUIState(UiState::kReady);
    mUi->cmdSend->setFocus();
}

void Composer::SendByte()
{
    const std::int32_t value = DataValue(mUi->TxtData->text());
    if (value < 0 || value > kLargestByte)
        mServices.boxes.MsgBox(QStringLiteral("Number must be between 0 and 255"), QMessageBox::Warning);
    else
        mServices.port.Output(QByteArray(1, char(value)));
}

CMessage Composer::ComposedMessage() const
{
    CMessage message;
    message.Command = mServices.commands.GetCommandNumber(mUi->CboCommand->currentText());
    message.State = GetStateValue(mUi->cmdState->text());
    message.extended = GetExtendedValue(mUi->cmdExtended->text());
    message.data = DataValue(mUi->TxtData->text());
    message.EchoSend = true;
    message.EchoReply = true;
    return message;
}

void Composer::SendCommand()
{
    CMessage message = ComposedMessage();
    if (message.Command >= CommandTable::kSize)
        throw SubscriptOutOfRange();
    if (mServices.specials.IsSpecialCommand(message.Command)) {
        mHost->OpenSpecialCommand(message);
        return;
    }
    if (message.Command >= CommandTable::kFirstSubCommand) {
        // The sub-command's number takes the place of whatever data was typed.
        message.data = (message.Command - CommandTable::kFirstSubCommand) * 256;
        message.Command = CommandTable::kSubCommandCarrier;
    }
    if (mHost->IsConnected())
        mServices.handler.SendMessage(message);
}

bool Composer::SelectCommand(int command)
{
    const CommandEntry& entry = mServices.commands[command];
    // Without its category the values would stand beside another command, ready to be sent. Number 0 has no command.
    if (command == 0 || mUi->CboCategory->findText(entry.Category, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        return false;
    mUi->CboCategory->setCurrentText(entry.Category);
    mUi->CboCommand->setCurrentText(entry.Name);
    return true;
}

bool Composer::ShowCommand(int command, bool on)
{
    if (!SelectCommand(command))
        return false;
    SetFields(on, false, QStringLiteral("0"));
    return true;
}

void Composer::SetFields(bool on, bool extended, const QString& dataText)
{
    mUi->cmdState->setText(on ? kOn : kOff);
    mUi->cmdExtended->setText(extended ? kTrue : kFalse);
    mUi->TxtData->setText(dataText);
}

void Composer::SendAs(int command, bool on, bool extended, const QString& dataText)
{
    if (!SelectCommand(command))
        throw Error(
            ErrorNumber::kSubscriptOutOfRange,
            QStringLiteral("\"%1\" is in a category that is not listed").arg(mServices.commands.FriendlyName(command)));
    SetFields(on, extended, dataText);
    Send();
}

bool Composer::ShowMessage(const CMessage& message)
{
    if (!SelectCommand(message.Command))
        return false;
    SetFields(message.State, message.extended,
              mServices.settings.HexData ? HexData(message.data) : QString::number(message.data));
    // The list can be clicked also inside an exchange, which the window's own would disturb.
    if (mServices.specials.IsSpecialCommand(message.Command) && mHost->IsReady())
        mHost->OpenSpecialCommand(message);
    return true;
}

}  // namespace fenrik
