#include "options/frmCommSetup.h"

#include "modem/frmModemAutoDetect.h"
#include "options/ModemChoice.h"
#include "options/OptionsHost.h"
#include "options/PortChoice.h"
#include "options/PortScan.h"
#include "options/ProfileBoxes.h"
#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "platform/SerialControl.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"
#include "widgets/ToolIcon.h"

#include "ui_frmCommSetup.h"

#include <QApplication>

namespace fenrik {

namespace {

constexpr const char* kProtocols[] = {"Fenrik 98", "Fenrik 2000"};
constexpr int kPicture = 32;

bool HasSync(const QString& protocol)
{
    return protocol.contains(QLatin1String("2000"));
}

}  // namespace

frmCommSetup::frmCommSetup(const Parts& parts, QWidget* parent)
    : QDialog(parent), mParts(parts), mUi(std::make_unique<Ui::frmCommSetup>())
{
    mUi->setupUi(this);
    SetUpHelpers();
    ShowPictures();
    ShowSettings();
    ShowPorts();
    // From here on a change is the user's.
    SetUpGeneral();
    SetUpMethods();
    connect(mUi->cmdDetectModems, &QPushButton::clicked, this,
            [this] { Guarded(mParts.errors, "frmCommSetup.cmdDetectModems.Click", [this] { DetectModems(); }); });
    connect(mUi->cmdContinue, &QPushButton::clicked, this,
            [this] { Guarded(mParts.errors, "frmCommSetup.cmdContinue.Click", [this] { Continue(); }); });
}

frmCommSetup::~frmCommSetup()
{
    if (!mUnloaded)
        Unload();
}

void frmCommSetup::SetUpHelpers()
{
    mPort = new PortChoice({*mUi->lstPorts, *mUi->txtPortNumber}, mParts.settings, mParts.run, this);
    mModem =
        new ModemChoice({*mUi->lstModemPorts, *mUi->cmbModemBaudRate, *mUi->txtModemInitString}, mParts.settings, this);
    mProfiles = new ProfileBoxes({*mUi->cbRDEnable, *mUi->cboRDProfiles, *mUi->cmdRDProfiles}, mParts.remote,
                                 mParts.profiles, mParts.boxes, this);
}

void frmCommSetup::ShowPictures()
{
    const auto show = [](QLabel& label, const char* name) {
        label.setPixmap(ToolIcon(QLatin1String(name)).pixmap(kPicture));
    };
    show(*mUi->imgTransceiverPort, "ConnectUsing_101");
    show(*mUi->imgModem, "ConnectUsing_102");
    show(*mUi->imgRD, "ConnectUsing_103");
}

void frmCommSetup::ShowSettings()
{
    const Settings& settings = mParts.settings;
    for (const char* protocol : kProtocols)
        mUi->CboProtocol->addItem(QLatin1String(protocol));
    // Any other text than the older network's means the present one.
    mUi->CboProtocol->setCurrentIndex(settings.IsLegacyProtocol() ? 0 : 1);
    mUi->cbSendSync->setEnabled(HasSync(mUi->CboProtocol->currentText()));
    mUi->cbSendSync->setChecked(settings.SendSync);
    mUi->cbInternal->setChecked(settings.ShowFenrikInternal);
    mUi->barNodes->setValue(settings.NodesInSystem);
    ShowNodes(mUi->barNodes->value());
    mUi->sstabPortSelection->setCurrentIndex(settings.ConnectionType - 1);
    mProfiles->Show();
}

void frmCommSetup::ShowNodes(int count)
{
    mUi->lblNodes->setText(QStringLiteral("%1 Nodes").arg(count));
}

void frmCommSetup::ShowPorts()
{
    const ComPorts ports = mParts.ports.Snapshot();
    PortProbe probe(ports, mParts.port);
    const PortConditions found = ScanPorts([&probe](int number) { probe.Try(number); });
    const auto device = [&ports](int number) { return ports.Description(number); };
    mPort->Show(found, device, mParts.port.PortOpen() ? mParts.port.CommPort() : 0);
    mModem->Show(found, device);
}

void frmCommSetup::SetUpGeneral()
{
    connect(mUi->CboProtocol, &QComboBox::currentTextChanged, this, &frmCommSetup::ChooseProtocol);
    connect(mUi->barNodes, &QSlider::valueChanged, this, [this](int count) {
        mParts.settings.NodesInSystem = std::int16_t(count);
        ShowNodes(count);
    });
    connect(mUi->cbSendSync, &QCheckBox::toggled, this, [this](bool checked) { mParts.settings.SendSync = checked; });
    connect(mUi->cbInternal, &QCheckBox::clicked, this, &frmCommSetup::AllowInternal);
}

void frmCommSetup::SetUpMethods()
{
    // No group of the toolkit's lets the last box of it be cleared again.
    QCheckBox* const boxes[] = {mUi->chkTransceiverIsDefault, mUi->chkModemIsDefault, mUi->chkPipeServerIsDefault};
    for (QCheckBox* box : boxes) {
        for (QCheckBox* other : boxes) {
            if (other == box)
                continue;
            connect(box, &QCheckBox::toggled, other, [other](bool checked) {
                if (checked)
                    other->setChecked(false);
            });
        }
    }
}

void frmCommSetup::ChooseProtocol(const QString& protocol)
{
    mUi->cbSendSync->setEnabled(HasSync(protocol));
}

void frmCommSetup::AllowInternal(bool checked)
{
    if (checked && !mParts.settings.ShowFenrikInternal) {
        QApplication::beep();
        checked = mParts.boxes.MsgBox(
                      QStringLiteral("By checking this option, you will be able to send Internal System Commands to "
                                     "the Fenrik network.\nThis is recommended for advanced users only.  Are you sure "
                                     "you want to enable this option?"),
                      QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Cancel,
                      QStringLiteral("Allow Fenrik Internal Commands")) == QMessageBox::Ok;
        mUi->cbInternal->setChecked(checked);
    }
    mParts.settings.ShowFenrikInternal = checked;
    mParts.host.ShowCategories();
}

void frmCommSetup::DetectModems()
{
    frmModemAutoDetect detection(mParts.ports, mParts.run, mParts.pump, mParts.boxes, mParts.errors, this);
    detection.exec();
    if (!detection.Canceled())
        mModem->SelectPort(detection.SelectedPort());
}

void frmCommSetup::Continue()
{
    if (!mPort->Check(mParts.boxes, mParts.errors)) {
        mUi->sstabPortSelection->setCurrentWidget(mUi->tabTransceiver);
        return;
    }
    if (mProfiles->LacksProfile()) {
        mUi->sstabPortSelection->setCurrentWidget(mUi->tabPipeServer);
        mParts.boxes.MsgBox(QStringLiteral("In order to enable Remote Diagnostics, please choose a User Profile."),
                            QMessageBox::Warning);
        return;
    }
    mProfiles->Apply();
    accept();
}

void frmCommSetup::done(int result)
{
    if (ProtocolChanged() && !mParts.settings.FirstRun && !mParts.pump.Stopped())
        mParts.boxes.MsgBox(
            QStringLiteral("The program will have to be restarted for the protocol change to take effect."),
            QMessageBox::Information);
    Guarded(mParts.errors, "frmCommSetup.Form.Unload", [this] { Unload(); });
    QDialog::done(result);
}

bool frmCommSetup::ProtocolChanged() const
{
    return mUi->CboProtocol->currentIndex() != (mParts.settings.IsLegacyProtocol() ? 0 : 1);
}

void frmCommSetup::Unload()
{
    mUnloaded = true;
    Settings& settings = mParts.settings;
    if (ProtocolChanged())
        settings.Protocol = mUi->CboProtocol->currentText();
    mPort->Apply();
    mModem->Apply();
    TakeMethod();
    mParts.host.ApplyNodesInSystem();
    mParts.host.WriteSettings();
}

void frmCommSetup::TakeMethod()
{
    const QCheckBox* const boxes[] = {mUi->chkTransceiverIsDefault, mUi->chkModemIsDefault,
                                      mUi->chkPipeServerIsDefault};
    for (int type = 1; type <= 3; ++type) {
        if (boxes[type - 1]->isChecked())
            mParts.settings.ConnectionType = type;
    }
}

}  // namespace fenrik
