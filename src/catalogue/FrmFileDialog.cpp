#include "catalogue/FrmFileDialog.h"

#include "platform/Boxes.h"
#include "shared/Settings.h"

#include "ui_FrmFileDialog.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>

namespace fenrik {

namespace {

const QString kParent = QStringLiteral("..");

QString Shown(const QString& field)
{
    return field.isNull() ? QStringLiteral("< Not Entered >") : field;
}

}  // namespace

FrmFileDialog::FrmFileDialog(Settings& settings, const QString& firstFolder, Boxes& boxes, Check check,
                             std::vector<Volume> volumes, QWidget* parent)
    : QDialog(parent), mSettings(settings), mBoxes(boxes), mVolumes(std::move(volumes)), mCheck(std::move(check)),
      mUi(std::make_unique<Ui::FrmFileDialog>())
{
    mUi->setupUi(this);
    SetUpLists();
    ShowPresent(firstFolder);
}

FrmFileDialog::~FrmFileDialog() = default;

void FrmFileDialog::SetUpLists()
{
    for (const Volume& volume : mVolumes)
        mUi->Drive1->addItem(volume.name, volume.root);
    connect(mUi->Drive1, &QComboBox::activated, this,
            [this](int position) { ShowFolder(mUi->Drive1->itemData(position).toString()); });
    connect(mUi->Dir1, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { EnterFolder(item->text()); });
    connect(mUi->File1, &QListWidget::currentTextChanged, this, &FrmFileDialog::ChooseFile);
    // Walking through the list with the keys only shows in the labels what each file is.
    connect(mUi->File1, &QListWidget::itemClicked, this, [this] { (void)TellComplaint(); });
    connect(mUi->File1, &QListWidget::itemActivated, this, [this] {
        if (!TellComplaint())
            accept();
    });
    connect(mUi->cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    mUi->lblPath->installEventFilter(this);
}

void FrmFileDialog::ShowPresent(const QString& firstFolder)
{
    const bool known = !mSettings.DatabasePath.isEmpty() && QFileInfo(mSettings.DatabasePath).isDir();
    ShowFolder(known ? mSettings.DatabasePath : firstFolder);
    const auto present = mUi->File1->findItems(mSettings.DatabaseName, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (known && !present.isEmpty())
        mUi->File1->setCurrentItem(present.constFirst());
}

void FrmFileDialog::ShowFolder(const QString& folder)
{
    const QDir dir(folder);
    mFolder = QDir::cleanPath(dir.absolutePath());
    mUi->File1->clear();
    mUi->Dir1->clear();
    if (!dir.isRoot())
        mUi->Dir1->addItem(kParent);
    mUi->Dir1->addItems(dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase));
    mUi->File1->addItems(dir.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase));
    mUi->Drive1->setCurrentIndex(VolumeOf(mVolumes, mFolder));
    ShowPath();
    ChooseFile({});
}

void FrmFileDialog::EnterFolder(const QString& name)
{
    const QString left = QDir(mFolder).dirName();
    ShowFolder(mFolder + QLatin1Char('/') + name);
    const auto back = mUi->Dir1->findItems(left, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (name == kParent && !back.isEmpty())
        mUi->Dir1->setCurrentItem(back.constFirst());
    else
        mUi->Dir1->setCurrentRow(0);
}

void FrmFileDialog::ChooseFile(const QString& name)
{
    const QString path = mFolder + QLatin1Char('/') + name;
    mFile = name;
    mComplaint = name.isEmpty() ? QString() : mCheck(path);
    mInfo = name.isEmpty() || !mComplaint.isEmpty() ? std::nullopt : ReadLegacyInfo(path);
    ShowInfo();
}

/// True if there was something to tell.
bool FrmFileDialog::TellComplaint()
{
    if (!mComplaint.isEmpty())
        mBoxes.MsgBox(mComplaint, QMessageBox::Warning);
    return !mComplaint.isEmpty();
}

void FrmFileDialog::ShowInfo()
{
    mUi->lblName->setText(mFile);
    const QString none = mFile.isEmpty() ? QString() : QStringLiteral("This is no system database.");
    mUi->lblsystem->setText(mInfo ? Shown(mInfo->systemName) : none);
    mUi->lblDate->setText(mInfo ? Shown(mInfo->created) : QString());
    mUi->lblBy->setText(mInfo ? Shown(mInfo->createdBy) : QString());
}

void FrmFileDialog::ShowPath()
{
    QLabel& label = *mUi->lblPath;
    const auto fits = [&label](const QString& text) {
        return label.fontMetrics().horizontalAdvance(text) <= label.contentsRect().width();
    };
    label.setText(ShortenedFolder(mFolder, fits));
    label.setToolTip(mFolder.toHtmlEscaped());
}

bool FrmFileDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == mUi->lblPath && event->type() == QEvent::Resize)
        ShowPath();
    return QDialog::eventFilter(watched, event);
}

void FrmFileDialog::done(int)
{
    if (!mInfo && !WantsNone())
        return;
    TakeOver();
    QDialog::done(mInfo ? Accepted : Rejected);
}

bool FrmFileDialog::WantsNone()
{
    const auto answer =
        mBoxes.MsgBox(QStringLiteral("Without a valid system database selected \n"
                                     "the FenrikII Diagnostics cannot connect to the Fenrik system.\n\n"
                                     "Do you still want to close this form ?"),
                      QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QStringLiteral("Select Database"));
    return answer == QMessageBox::Yes;
}

void FrmFileDialog::TakeOver()
{
    mSettings.DatabasePath = mInfo ? mFolder : QString();
    mSettings.DatabaseName = mInfo ? mFile : QString();
    const LegacyInfo info = mInfo.value_or(LegacyInfo());
    mSettings.DatabaseSystemName = info.systemName;
    mSettings.DatabaseCreated = info.created;
    mSettings.DatabaseBy = info.createdBy;
}

}  // namespace fenrik
