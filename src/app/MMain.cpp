#include "app/MMain.h"

#include "app/DiagPanels.h"
#include "app/LegacyOptions.h"
#include "app/Services.h"
#include "app/WindowState.h"
#include "app/frmDiag.h"
#include "app/frmSplash.h"
#include "legacy/FrmDiag98.h"
#include "link/Transceiver.h"
#include "model/CSystem.h"
#include "platform/CFileSystem.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "shared/LoadFailure.h"
#include "widgets/WaitCursor.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace fenrik {

MMain::Environment MMain::OfThisProcess()
{
    return {ProgramFolder::OfThisProcess(), SettingsStore::ConfigFolder(), VersionInfo::OfThisBuild(),
            WindowState::Screens()};
}

MMain::MMain(const Environment& environment)
    : mEnvironment(environment), mStore(environment.configFolder + QStringLiteral("/settings.ini")),
      mWindowStore(environment.configFolder + QStringLiteral("/window.ini")), mPump(mClock),
      mErrors(mEnvironment.folder, mEnvironment.version, mClock, mBoxes),
      mRegistryStore(environment.configFolder + QStringLiteral("/registry.ini")), mRegistry(mRegistryStore, mErrors),
      mProfiles(mRegistry, mBoxes, mClock), mRemote(mProfiles, mStore),
      mPorts(environment.configFolder + QStringLiteral("/ports")), mSpecials(mCommands, *this),
      mCatalogue(mCommands, mSettings, mBoxes, *this, mEnvironment.folder.Path()), mPort(mPorts),
      mHandler(mPort, mClock, mPump, mCommands, mErrors), mLog(mRun, mSettings, mCommands, mClock, mEnvironment.version)
{
}

MMain::~MMain() = default;

bool MMain::Main()
{
    bool started = false;
    Guarded(mErrors, "MMain:Main", [this, &started] {
        frmSplash splash(mEnvironment.version);
        splash.show();
        started = Start(splash);
        if (started && mLegacyWindow)
            AskForDatabase();
    });
    return started;
}

bool MMain::Start(frmSplash& splash)
{
    const WaitCursor hourglass;
    mPump.Once();
    LoadSettings();
    mRemote.LoadRDSettings();
    SelectUSBTransceiver(mPorts, mSettings, mRun);
    if (!LoadCharacterMaps() || !OpenMainWindow(splash))
        return false;
    TellOfFilesSetAside();
    ChooseDiagLogPath();
    mLog.NewFileName();
    return true;
}

void MMain::LoadSettings()
{
    mSettingsBroken = !Guarded(mErrors, "MMain:LoadSettings", [this] { fenrik::LoadSettings(mStore, mSettings); });
    mRun.LegacyProtocol = mSettings.IsLegacyProtocol();
}

void MMain::TellOfFilesSetAside()
{
    QStringList names;
    const auto look = [&names](const auto& store) {
        if (store.SetAside())
            names << QFileInfo(store.Path()).fileName();
    };
    look(mStore);
    look(mWindowStore);
    look(mRegistryStore);
    if (names.isEmpty())
        return;
    const QString text =
        QStringLiteral("Damaged: %1. Kept with \".broken\" behind the name in %2")
            .arg(names.join(QStringLiteral(", ")), QDir::toNativeSeparators(mEnvironment.configFolder));
    if (mLegacyWindow)
        mLegacyWindow->setMsg(text);
    else
        mWindow->setMsg(text);
}

bool MMain::LoadCharacterMaps()
{
    try {
        PopulateAsciiMaps(mAsciiMap, mEnvironment.folder.File(QStringLiteral("fxmaps.dav")));
        return true;
    } catch (const Error&) {
        TellLoadFailure(mBoxes, QStringLiteral("fxmaps.dav"));
        return false;
    }
}

bool MMain::LoadAnalogMaps()
{
    try {
        mWindow->Panels().GetAnalogCommands(mEnvironment.folder.File(QStringLiteral("fxmaps.dav")));
        return true;
    } catch (const Error&) {
        // The file that was read is fxmaps.dav. The text has always named the other one, and support knows it so.
        TellLoadFailure(mBoxes, QStringLiteral("ncCommands.dav"));
        return false;
    }
}

bool MMain::OpenMainWindow(frmSplash& splash)
{
    if (!mSettings.IsLegacyProtocol())
        return OpenDiagWindow(splash);
    OpenLegacyWindow();
    return true;
}

void MMain::OpenLegacyWindow()
{
    const LegacyServices services{.settings = mSettings,
                                  .store = mStore,
                                  .port = mPort,
                                  .log = mLog,
                                  .clock = mClock,
                                  .pump = mPump,
                                  .boxes = mBoxes,
                                  .errors = mErrors,
                                  .version = mEnvironment.version,
                                  .asciiMap = mAsciiMap,
                                  .programFolder = mEnvironment.folder.Path()};
    mLegacyOptions = std::make_unique<LegacyOptions>(AllServices(), static_cast<ProgramHost&>(*this));
    mLegacyWindow = std::make_unique<FrmDiag98>(services, static_cast<LegacyHost&>(*this));
    WindowState(mWindowStore, mEnvironment.screens).Restore(*mLegacyWindow);
    mLegacyWindow->show();
}

void MMain::AskForDatabase()
{
    Protocol98& protocol = mLegacyWindow->Protocol();
    if (!protocol.IsChosen())
        mBoxes.MsgBox(QStringLiteral("A system database has not been selected.\n"
                                     "Please select a system database."),
                      QMessageBox::Information);
    else if (!protocol.ConfirmDB())
        mBoxes.MsgBox(QStringLiteral("The database %1\n"
                                     "has been moved or deleted. Please select a new system Database.")
                          .arg(QDir::toNativeSeparators(protocol.DatabaseFile())),
                      QMessageBox::Warning);
    else
        return;
    mLegacyWindow->ChooseDatabase();
}

Services MMain::AllServices()
{
    return {.settings = mSettings,
            .store = mStore,
            .windowStore = mWindowStore,
            .run = mRun,
            .commands = mCommands,
            .specials = mSpecials,
            .port = mPort,
            .handler = mHandler,
            .log = mLog,
            .clock = mClock,
            .pump = mPump,
            .boxes = mBoxes,
            .shell = mShell,
            .errors = mErrors,
            .version = mEnvironment.version,
            .folder = mEnvironment.folder,
            .ports = mPorts,
            .remote = mRemote,
            .profiles = mProfiles};
}

QString MMain::FirstSteps() const
{
    if (mRun.USBTransceiverPort != 0)
        return QStringLiteral("Welcome! Connect the transceiver to the vehicle, then press \"Connect\" (Ctrl+K).");
    return QStringLiteral(
        "Welcome! Plug in the transceiver, choose its port in \"Network options\" (Ctrl+N), then press "
        "\"Connect\" (Ctrl+K).");
}

bool MMain::OpenDiagWindow(frmSplash& splash)
{
    mWindow = std::make_unique<frmDiag>(AllServices(), mAsciiMap, static_cast<ProgramHost&>(*this));
    // Each run starts without a system; the two settings are empty here.
    mWindow->System().LoadSystem(mSettings.SystemName, mSettings.SystemPath, false);
    splash.setInfo(QStringLiteral("Loading the command catalogue..."));
    mCatalogue.LoadCommands(mWindow->System().Database());
    if (!mEnding)
        mSpecials.LoadSpecialCommands(mEnvironment.folder.File(QStringLiteral("SpecialCommands.dav")), mBoxes);
    if (mEnding || !LoadAnalogMaps())
        return false;
    PopulatecboCategoryList();
    if (mRun.USBTransceiverPort != 0)
        mWindow->setStatus(QStringLiteral("USB Transceiver Detected and Autoselected."));
    if (mSettings.FirstRun)
        mWindow->setMsg(FirstSteps());
    WindowState(mWindowStore, mEnvironment.screens).Restore(*mWindow);
    mWindow->show();
    return true;
}

void MMain::LoadCommands()
{
    mCatalogue.LoadCommands(mWindow->System().Database());
    PopulatecboCategoryList();
}

void MMain::PopulatecboCategoryList()
{
    mWindow->PopulatecboCategoryList(mCatalogue.HiddenCategory());
}

void MMain::ChooseDiagLogPath()
{
    const QString folder = mEnvironment.folder.File(QStringLiteral("diaglogs"));
    const bool usable = CFileSystem::DirectoryExists(folder) || CFileSystem::CreateDirectory(folder);
    mRun.DiagLogPath = usable ? folder : mEnvironment.folder.Path();
}

void MMain::ExploreDiagPath()
{
    Guarded(mErrors, "Main.ExploreDiagPath", [this] {
        if (mShell.Explore(mRun.DiagLogPath) != Shell::kOpened)
            throw Error(ErrorNumber::kFileNotFound,
                        QStringLiteral("The folder %1 could not be shown").arg(mRun.DiagLogPath));
    });
}

void MMain::WriteSettings()
{
    Guarded(mErrors, "MMain:SaveSettings", [this] {
        // Once: what the first write leaves behind is not broken any more.
        if (std::exchange(mSettingsBroken, false))
            mStore.KeepBrokenCopy();
        mRemote.SaveRDSettings();
        SaveSettings(mStore, mSettings);
    });
}

void MMain::SaveAndEnd()
{
    mSettings.FirstRun = false;
    WriteSettings();
    Guarded(mErrors, "MMain:SaveWindow",
            [this] { WindowState(mWindowStore, mEnvironment.screens).Save(*MainWindow()); });
    EndProgram();
}

void MMain::EndProgram()
{
    mEnding = true;
    mPump.Stop();
    QApplication::quit();
}

QWidget* MMain::MainWindow() const
{
    if (mLegacyWindow)
        return mLegacyWindow.get();
    return mWindow.get();
}

void MMain::OpenNetworkOptions(QWidget& parent)
{
    mLegacyOptions->Dialogs().OpenNetworkOptions(&parent);
}

void MMain::OpenToolOptions(QWidget& parent)
{
    mLegacyOptions->Dialogs().OpenToolOptions(&parent, QString());
}

void MMain::OpenAbout(QWidget& parent)
{
    mLegacyOptions->Dialogs().OpenAbout(&parent);
}

int MMain::SelectedNodeNumber() const
{
    return mWindow ? mWindow->System().SelectedNodeNumber() : 0;
}

}  // namespace fenrik
