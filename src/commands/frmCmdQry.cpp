#include "commands/frmCmdQry.h"

#include "commands/CommandsHost.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"

#include "ui_frmCmdQry.h"

namespace fenrik {

namespace {

constexpr int kNodes = 32;
constexpr double kResultScale = 1.8;

}  // namespace

frmCmdQry::frmCmdQry(CMsgHandler& handler, CSystem& system, const CommandTable& commands, const CommandsHost& host,
                     ErrorReporter& errors, QWidget* parent)
    : QDialog(parent), mCommands(commands), mHost(host), mErrors(errors), mQuery(handler, system, *this),
      mUi(std::make_unique<Ui::frmCmdQry>())
{
    mUi->setupUi(this);
    for (int number = 1; number <= kNodes; ++number)
        mUi->cboNodeNumber->addItem(QString::number(number));
    QFont large = font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * kResultScale);
    mUi->lblResult->setFont(large);
    SetUpActions();
    ShowCategories();
}

frmCmdQry::~frmCmdQry() = default;

void frmCmdQry::SetUpActions()
{
    connect(mUi->cboCatList, &QComboBox::currentTextChanged, this, &frmCmdQry::ShowCommands);
    connect(mUi->cboCatList, &QComboBox::textActivated, this, &frmCmdQry::ShowCommands);  // also the same one again
    connect(mUi->cboCmdList, &QComboBox::activated, this, &frmCmdQry::ForgetResult);
    connect(mUi->cboNodeNumber, &QComboBox::activated, this, &frmCmdQry::ForgetResult);
    connect(mUi->bSend, &QPushButton::clicked, this, &frmCmdQry::Send);
    connect(mUi->bCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCmdQry::ShowCategories()
{
    QStringList categories;
    for (int number = 1; number < CommandTable::kSize; ++number) {
        const QString& category = mCommands[number].Category;
        if (category != QLatin1String(CommandTable::kUndefinedCategory) && !categories.contains(category))
            categories.append(category);
    }
    mUi->cboCatList->addItems(categories);
}

void frmCmdQry::ShowCommands(const QString& category)
{
    QStringList names;
    for (int number = 1; number < CommandTable::kSize; ++number) {
        if (mCommands[number].Category == category)
            names.append(mCommands[number].Name);
    }
    mUi->cboCmdList->clear();
    mUi->cboCmdList->addItems(names);
    // The first command is selected by this, which counts as a click on it.
    ForgetResult();
}

void frmCmdQry::ForgetResult()
{
    if (mUi->chkClearResults->isChecked())
        mUi->lstResults->clear();
    mUi->lblResult->clear();
}

void frmCmdQry::Send()
{
    ForgetResult();
    EnableInput(false);
    Guarded(mErrors, "frmCmdQry:bSend:Click", [this] {
        const QString command = mUi->cboCmdList->currentText();
        mQuery.Run(mUi->cboNodeNumber->currentText().toInt(), mCommands.GetCommandNumber(command), command);
    });
    EnableInput(true);
    mUi->bSend->setFocus();
}

void frmCmdQry::EnableInput(bool enabled)
{
    mUi->fraQuestion->setEnabled(enabled);
    mUi->bSend->setEnabled(enabled);
}

bool frmCmdQry::PortOpenForTx() const
{
    return mHost.PortOpenForTx();
}

void frmCmdQry::AddStep(const QString& line)
{
    if (mUi->chkVerbose->isChecked())
        AddLine(line);
}

void frmCmdQry::AddLine(const QString& line)
{
    mUi->lstResults->addItem(line);
    mUi->lstResults->scrollToBottom();
}

void frmCmdQry::ShowResult(const QString& text)
{
    mUi->lblResult->setText(text);
}

}  // namespace fenrik
