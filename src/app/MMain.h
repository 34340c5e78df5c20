#pragma once

#include "app/ErrorDialog.h"
#include "app/ProgramHost.h"
#include "catalogue/CatalogueHost.h"
#include "catalogue/CommandCatalogue.h"
#include "catalogue/SpecialCommands.h"
#include "diagnostics/AsciiMap.h"
#include "legacy/LegacyHost.h"
#include "link/CMsgHandler.h"
#include "logging/MsgLogging.h"
#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "platform/ProgramFolder.h"
#include "platform/RegistryStore.h"
#include "platform/SerialControl.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"
#include "platform/VersionInfo.h"
#include "remote/MRegistry.h"
#include "remote/PipeSettings.h"
#include "remote/RDMain.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QList>
#include <QRect>

#include <memory>

namespace fenrik {

class FrmDiag98;
class LegacyOptions;
class frmDiag;
class frmSplash;
struct Services;

/// The whole program as one object, made in main(): owns the settings, the command table, the link engine and the main
/// window, and hands out references. What tests replace comes in by the constructor.
class MMain : private CatalogueHost, private ProgramHost, private LegacyHost {
public:
    struct Environment {
        ProgramFolder folder;
        QString configFolder;  ///< of settings.ini, window.ini, registry.ini and ports/
        VersionInfo version;
        QList<QRect> screens = {};  ///< as WindowState takes them; without any, windows are as large as they like
    };

    /// The environment of this process.
    [[nodiscard]] static Environment OfThisProcess();

    explicit MMain(const Environment& environment);
    ~MMain() override;

    /// Starts the program: reads settings and databases and shows the main window. False if a file is missing without
    /// which it can't work; the user has been told then.
    bool Main();

    /// Null before Main, if it failed, and while the older network's window is open.
    [[nodiscard]] frmDiag* Window() const { return mWindow.get(); }

    /// Null but with the protocol "Fenrik 98".
    [[nodiscard]] FrmDiag98* LegacyWindow() const { return mLegacyWindow.get(); }

    /// The one of the two that there is.
    [[nodiscard]] QWidget* MainWindow() const;

private:
    // CatalogueHost
    void EndProgram() override;
    [[nodiscard]] int SelectedNodeNumber() const override;

    // ProgramHost; the last one also LegacyHost
    void LoadCommands() override;
    void PopulatecboCategoryList() override;
    void ExploreDiagPath() override;
    void WriteSettings() override;
    void SaveAndEnd() override;

    // LegacyHost
    void OpenNetworkOptions(QWidget& parent) override;
    void OpenToolOptions(QWidget& parent) override;
    void OpenAbout(QWidget& parent) override;

    bool Start(frmSplash& splash);
    void LoadSettings();
    void TellOfFilesSetAside();
    bool LoadCharacterMaps();
    bool LoadAnalogMaps();
    bool OpenMainWindow(frmSplash& splash);
    bool OpenDiagWindow(frmSplash& splash);
    void OpenLegacyWindow();
    [[nodiscard]] Services AllServices();
    void AskForDatabase();
    /// What a new user does first.
    [[nodiscard]] QString FirstSteps() const;
    void ChooseDiagLogPath();

    Environment mEnvironment;
    SettingsStore mStore;
    SettingsStore mWindowStore;
    Settings mSettings;
    RunState mRun;
    Boxes mBoxes;
    Shell mShell;
    SystemClock mClock;
    QtEventPump mPump;
    ErrorDialog mErrors;
    RegistryStore mRegistryStore;
    MRegistry mRegistry;
    PipeSettings mProfiles;
    RDMain mRemote;
    ComPorts mPorts;
    CommandTable mCommands;
    SpecialCommands mSpecials;
    CommandCatalogue mCatalogue;
    AsciiMap mAsciiMap;
    SerialControl mPort;
    CMsgHandler mHandler;
    MsgLogging mLog;
    std::unique_ptr<LegacyOptions> mLegacyOptions;
    std::unique_ptr<frmDiag> mWindow;
    std::unique_ptr<FrmDiag98> mLegacyWindow;
    bool mSettingsBroken = false;
    bool mEnding = false;
};

}  // namespace fenrik
