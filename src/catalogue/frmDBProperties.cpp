#include "catalogue/frmDBProperties.h"

#include "catalogue/Markets.h"
#include "catalogue/SystemDetails.h"
#include "platform/Boxes.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include "ui_frmDBProperties.h"

namespace fenrik {

namespace {

const QString kDefaultLine = QStringLiteral("(Default Database) ncCommands.dav");
const QString kBoxTitle = QStringLiteral("Select Fenrik System");
const QString kFilter = QStringLiteral("All Fenrik file types (*.bin *.dav);;"
                                       "Fenrik Node-Specific Binaries (*.bin);;"
                                       "Fenrik Command Databases (*.dav)");

}  // namespace

frmDBProperties::frmDBProperties(Settings& settings, const QString& programFolder, Boxes& boxes, ErrorReporter& errors,
                                 QWidget* parent)
    : QDialog(parent), mSettings(settings), mBoxes(boxes), mErrors(errors), mSystems(programFolder),
      mUi(std::make_unique<Ui::frmDBProperties>())
{
    mUi->setupUi(this);
    SetUpButtons();
    mSystems.Fill(settings.SystemName, settings.SystemPath);
    ShowSystems();
    ShowMarkets(programFolder);
    mUi->lstSystems->setCurrentRow(std::max(0, mSystems.PositionOf(settings.SystemName)));
}

frmDBProperties::~frmDBProperties() = default;

void frmDBProperties::SetUpButtons()
{
    connect(mUi->lstSystems, &QListWidget::currentRowChanged, this, &frmDBProperties::ShowDetails);
    connect(mUi->lstSystems, &QListWidget::itemDoubleClicked, mUi->cmdOk, &QPushButton::click);
    connect(mUi->cmdBrowse, &QPushButton::clicked, this,
            [this] { Guarded(mErrors, "frmDBProperties:cmdBrowse:Click", [this] { Browse(); }); });
    connect(mUi->cmdOk, &QPushButton::clicked, this, [this] {
        TakeOver();
        accept();
    });
    connect(mUi->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmDBProperties::ShowSystems()
{
    for (const SystemLine& line : mSystems.Lines()) {
        mUi->lstSystems->addItem(line.IsDefault() ? kDefaultLine : line.name);
        mUi->lstPaths->addItem(line.folder);
    }
}

void frmDBProperties::ShowMarkets(const QString& programFolder)
{
    for (const Market& market : ReadMarkets(programFolder + QStringLiteral("/ncCommand.dav")))
        mUi->cmbMarket->addItem(market.name, market.id);
    // A market that the database does not know selects nothing, and then the setting stays as it is.
    mUi->cmbMarket->setCurrentIndex(mUi->cmbMarket->findData(mSettings.SelectedMarket));
}

void frmDBProperties::ShowDetails(int position)
{
    const SystemDetails details = DetailsOf(mSystems, mSystems.Lines().at(std::size_t(position)));
    mUi->lblPath->setText(details.path);
    mUi->lblVersion->setText(details.version);
    mUi->lblModified->setText(details.modified);
    mUi->lblNodes->setText(details.nodes);
}

void frmDBProperties::Browse()
{
    const QString folder = mSystems.Lines().at(std::size_t(mUi->lstSystems->currentRow())).folder;
    const QString path = mBoxes.OpenFileBox(QStringLiteral("Select Fenrik Command Database"), kFilter, folder);
    if (!path.isEmpty())
        AddChosen(path);
}

void frmDBProperties::AddChosen(const QString& path)
{
    const SystemList::Added added = mSystems.Add(path);
    if (added == SystemList::Added::Invalid) {
        mBoxes.MsgBox(QStringLiteral("This is not a valid Fenrik Binary or Commands database."), QMessageBox::Warning,
                      QMessageBox::Ok, kBoxTitle);
        return;
    }
    if (added == SystemList::Added::ListedBefore) {
        mBoxes.MsgBox(QStringLiteral("This file already exists in the list (%1).").arg(SystemList::NameOf(path)),
                      QMessageBox::Information, QMessageBox::Ok, kBoxTitle);
    } else {
        mUi->lstSystems->addItem(mSystems.Lines().back().name);
        mUi->lstPaths->addItem(mSystems.Lines().back().folder);
    }
    mUi->lstSystems->setCurrentRow(mSystems.PositionOfFile(path));
}

void frmDBProperties::TakeOver()
{
    const SystemLine& line = mSystems.Lines().at(std::size_t(mUi->lstSystems->currentRow()));
    mSettings.SystemName = line.name;
    mSettings.SystemPath = line.IsDefault() ? QString() : line.folder;
    if (const QVariant market = mUi->cmbMarket->currentData(); market.isValid())
        mSettings.SelectedMarket = market.toInt();
}

}  // namespace fenrik
