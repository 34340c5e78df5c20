#include "options/FrmOptions.h"

#include "options/OptionsHost.h"
#include "shared/Settings.h"
#include "widgets/ToolIcon.h"

#include "ui_FrmOptions.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace fenrik {

namespace {

// Heights of the two sizes; larger fonts take more.
constexpr int kSmallHeight = 131;
constexpr int kFullHeight = 281;
constexpr int kLeastWidth = 320;
constexpr int kPicture = 32;

}  // namespace

FrmOptions::FrmOptions(Settings& settings, Size size, const QString& database, const QString& defaultDatabase,
                       OptionsHost& host, QWidget* parent)
    : QDialog(parent), mSettings(settings), mHost(host), mUi(std::make_unique<Ui::FrmOptions>())
{
    mUi->setupUi(this);
    ShowSettings();
    if (size == Size::Full)
        ShowDatabase(database, defaultDatabase);
    ShrinkTo(size);
    SetUpBoxes();
}

FrmOptions::~FrmOptions()
{
    if (!mUnloaded)
        Unload();
}

void FrmOptions::ShowSettings()
{
    mUi->ChkAutoDetect->setChecked(mSettings.AutoDetect);
    mUi->ChkListAllMsgs->setChecked(mSettings.ListAllMsgs);
    mUi->ChkCompactList->setChecked(mSettings.CompactList);
    mUi->ChkHex->setChecked(mSettings.HexData);
    mUi->imgInfo->setPixmap(ToolIcon(QStringLiteral("Info")).pixmap(kPicture));
}

void FrmOptions::ShowDatabase(const QString& database, const QString& defaultDatabase)
{
    const bool isDefault =
        QDir::cleanPath(database).compare(QDir::cleanPath(defaultDatabase), Qt::CaseInsensitive) == 0;
    mUi->txtDatabase->setText(isDefault ? QStringLiteral("Default - ncCommand.dav") : QFileInfo(database).fileName());
    mUi->txtDatabase->setToolTip(QDir::toNativeSeparators(database));
}

void FrmOptions::SetUpBoxes()
{
    connect(mUi->ChkAutoDetect, &QCheckBox::toggled, this, [this](bool checked) { mSettings.AutoDetect = checked; });
    connect(mUi->ChkListAllMsgs, &QCheckBox::toggled, this, [this](bool checked) {
        mSettings.ListAllMsgs = checked;
        mHost.ShowCategories();
    });
    connect(mUi->ChkCompactList, &QCheckBox::toggled, this, [this](bool checked) { mSettings.CompactList = checked; });
    connect(mUi->ChkHex, &QCheckBox::toggled, this, [this](bool checked) {
        mSettings.HexData = checked;
        mHost.ShowHexData();
    });
}

void FrmOptions::ShrinkTo(Size size)
{
    const bool full = size == Size::Full;
    for (QWidget* widget : {static_cast<QWidget*>(mUi->FrmOnConnect), static_cast<QWidget*>(mUi->lblDatabase),
                            static_cast<QWidget*>(mUi->txtDatabase), static_cast<QWidget*>(mUi->ChkCompactList),
                            static_cast<QWidget*>(mUi->ChkHex), static_cast<QWidget*>(mUi->imgInfo)})
        widget->setVisible(full);
    const QSize least = sizeHint();
    resize(std::max(least.width(), kLeastWidth), full ? kFullHeight : kSmallHeight);
}

void FrmOptions::done(int result)
{
    Unload();
    QDialog::done(result);
}

void FrmOptions::Unload()
{
    mUnloaded = true;
    mHost.WriteSettings();
}

}  // namespace fenrik
