#include "logging/FrmMsgLogging.h"

#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include "ui_FrmMsgLogging.h"

#include <QValidator>

#include <algorithm>

namespace fenrik {

namespace {

// Heights of the two sizes; larger fonts take more.
constexpr int kHeight00 = 94;
constexpr int kHeight98 = 254;
constexpr int kLeastWidth = 260;  // room for the title

/// Nothing but digits, and no number that the settings can't hold. Looks at the whole text, so that a paste passes the
/// same gate as a key.
class DigitsValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int&) const override
    {
        const auto isDigit = [](QChar character) {
            return character >= QLatin1Char('0') && character <= QLatin1Char('9');
        };
        bool fits = true;
        if (!text.isEmpty())
            text.toInt(&fits);
        return fits && std::all_of(text.begin(), text.end(), isDigit) ? Acceptable : Invalid;
    }
};

}  // namespace

FrmMsgLogging::FrmMsgLogging(Network network, Settings& settings, SettingsStore& store, ErrorReporter& errors,
                             QWidget* parent)
    : QDialog(parent), mSettings(settings), mStore(store), mErrors(errors), mUi(std::make_unique<Ui::FrmMsgLogging>())
{
    mUi->setupUi(this);
    mUi->EventArea->setVisible(network == Network::Older);
    ShowSettings();
    SetUpButtons();
    resize(std::max(sizeHint().width(), kLeastWidth), network == Network::Older ? kHeight98 : kHeight00);
}

FrmMsgLogging::~FrmMsgLogging() = default;

void FrmMsgLogging::ShowSettings()
{
    mUi->ChkLog->setChecked(mSettings.LoggingOn);
    mUi->ChkLogUnique->setChecked(mSettings.LoggingUnique);
    mUi->ChkEvent->setChecked(mSettings.LoggingBuffered);
    mUi->ChkDisconnect->setChecked(mSettings.LoggingDisconnect);
    mUi->Txtentries->setText(QString::number(mSettings.LoggingBufferMax));
    mUi->TxtTrigger->setText(QString::number(mSettings.LoggingEventTrigger));
    EnableControls();
}

void FrmMsgLogging::SetUpButtons()
{
    const auto connectBox = [this](QCheckBox* box, bool& setting) {
        connect(box, &QCheckBox::toggled, this, [this, &setting](bool checked) {
            setting = checked;
            EnableControls();
        });
    };
    connectBox(mUi->ChkLog, mSettings.LoggingOn);
    connectBox(mUi->ChkLogUnique, mSettings.LoggingUnique);
    connectBox(mUi->ChkEvent, mSettings.LoggingBuffered);
    connectBox(mUi->ChkDisconnect, mSettings.LoggingDisconnect);
    SetUpNumber(*mUi->Txtentries, mSettings.LoggingBufferMax);
    SetUpNumber(*mUi->TxtTrigger, mSettings.LoggingEventTrigger);
}

void FrmMsgLogging::SetUpNumber(QLineEdit& box, std::int32_t& number)
{
    box.setValidator(new DigitsValidator(&box));
    connect(&box, &QLineEdit::textChanged, this, [&number](const QString& text) { number = text.toInt(); });
}

void FrmMsgLogging::EnableControls()
{
    mUi->ChkLogUnique->setEnabled(mUi->ChkLog->isChecked());
    mUi->ChkEvent->setEnabled(mUi->ChkLog->isChecked());
    mUi->EventControls->setEnabled(mUi->ChkLog->isChecked() && mUi->ChkEvent->isChecked());
}

void FrmMsgLogging::done(int result)
{
    Guarded(mErrors, "FrmMsgLogging:Form:Unload", [this] { SaveLoggingSettings(mStore, mSettings); });
    QDialog::done(result);
}

}  // namespace fenrik
