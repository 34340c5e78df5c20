// The files that the program keeps for its user, with any bytes in them: settings.ini, window.ini and registry.ini.
// Each reader that has a part in the bytes gets them all. What is read can be saved, and is then read again as it was;
// a window is never put where nobody can reach it.

#include "ScratchFile.h"
#include "app/WindowState.h"
#include "modem/PhoneNumbers.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/RegistryStore.h"
#include "platform/SettingsStore.h"
#include "remote/MRegistry.h"
#include "remote/PipeSettings.h"
#include "remote/RDMain.h"
#include "shared/Clock.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include <QApplication>
#include <QHeaderView>
#include <QSplitter>
#include <QTreeWidget>

namespace fenrik {
namespace {

class NoBoxes : public Boxes {
public:
    Button MsgBox(const QString&, QMessageBox::Icon, Buttons, const QString&) override { return QMessageBox::Ok; }
};

/// A damaged registry is told as such, and nothing else goes wrong with it.
class RegistryErrors : public ErrorReporter {
public:
    void ShowError(int number, const QString&, const QString&, const QString&) override
    {
        if (number != ErrorNumber::kPathFileAccess)
            std::abort();
        told = true;
    }

    bool told = false;
};

/// The settings as a file has them: equal for equal settings.
QByteArray TextOf(const Settings& settings)
{
    const ScratchFile file({});
    SettingsStore store(file.Path());
    SaveSettings(store, settings);
    return file.Bytes();
}

/// False if a value is broken.
bool Load(const QString& path, Settings& settings)
{
    try {
        LoadSettings(SettingsStore(path), settings);
        return true;
    } catch (const Error& error) {
        if (error.Number() != ErrorNumber::kTypeMismatch && error.Number() != ErrorNumber::kOverflow)
            std::abort();
        return false;
    }
}

/// Whatever was read, the next run reads what this one saves.
void CheckSettings(const QByteArray& bytes)
{
    const ScratchFile file(bytes);
    Settings settings;
    (void)Load(file.Path(), settings);
    {
        SettingsStore store(file.Path());
        SaveSettings(store, settings);
    }
    Settings again;
    if (!Load(file.Path(), again) || TextOf(again) != TextOf(settings))
        std::abort();
}

void CheckPhoneNumbers(const QByteArray& bytes)
{
    const ScratchFile file(bytes);
    SettingsStore store(file.Path());
    PhoneNumbers numbers(store);
    const QStringList before = numbers.All();
    numbers.Add(QStringLiteral("555-0100"));
    const QStringList after = numbers.All();
    if (before.size() > PhoneNumbers::kMost || after.size() > PhoneNumbers::kMost ||
        after.first() != QLatin1String("555-0100") || after.size() > before.size() + 1)
        std::abort();
}

/// A window as the program's main window is for its place: one splitter, one list with columns.
class SampleWindow {
public:
    SampleWindow()
    {
        mWindow.setObjectName(QStringLiteral("frmDiag"));
        mSplitter.setObjectName(QStringLiteral("Splitter"));
        mSplitter.addWidget(new QWidget);
        auto* list = new QTreeWidget;
        list->setObjectName(QStringLiteral("lvMessages"));
        list->setColumnCount(3);
        mSplitter.addWidget(list);
        mHeader = list->header();
    }

    void Restore(const QByteArray& bytes)
    {
        const ScratchFile file(bytes);
        SettingsStore store(file.Path());
        const QRect screen(0, 0, 1024, 768);
        mWindow.setWindowState(Qt::WindowNoState);
        WindowState(store, {screen}).Restore(mWindow);
        if (!screen.contains(mWindow.geometry()))
            std::abort();
        for (int column = 0; column < mHeader->count() - 1; ++column) {
            if (mHeader->sectionSize(column) < 1 || mHeader->sectionSize(column) > 4000)
                std::abort();
        }
    }

private:
    QWidget mWindow;
    QSplitter& mSplitter = *new QSplitter(Qt::Vertical, &mWindow);
    QHeaderView* mHeader = nullptr;
};

bool SameProfiles(const CPipeProfiles& left, const CPipeProfiles& right)
{
    const auto bytes = [](const CPipeProfile& profile) {
        // A text from a file may hold what UTF-8 has no form for.
        return (profile.UserName + u'\n' + profile.LogonID + u'\n' + profile.ServerName + u'\n' + profile.UniqueID)
            .toUtf8();
    };
    return std::ranges::equal(left, right, [bytes](const CPipeProfile& one, const CPipeProfile& other) {
        return bytes(one) == bytes(other) && one.ServerPort == other.ServerPort;
    });
}

void CheckRegistry(const QByteArray& bytes)
{
    constexpr std::size_t kMostSaved = 3;  // each value is a write of the file
    const ScratchFile registryFile(bytes);
    const ScratchFile settingsFile(bytes);
    RegistryStore store(registryFile.Path());
    RegistryErrors errors;
    MRegistry registry(store, errors);
    NoBoxes boxes;
    const SystemClock clock;
    PipeSettings storage(registry, boxes, clock, [] { return QStringLiteral("{NEW}"); });
    SettingsStore settings(settingsFile.Path());
    RDMain remote(storage, settings);
    remote.LoadRDSettings();
    const CPipeProfiles profiles = remote.Profiles();
    for (const CPipeProfile& profile : profiles) {
        if (FindProfile(profiles, profile.key()) != &profile)
            std::abort();
        (void)FaultsOf(profile);
    }
    if (errors.told || !remote.StorageWorks() || profiles.size() > kMostSaved)
        return;
    remote.SaveProfiles(profiles);
    if (!SameProfiles(profiles, remote.Profiles()) || !SameProfiles(profiles, storage.LoadProfiles()))
        std::abort();
}

}  // namespace
}  // namespace fenrik

// What the library of fonts never frees.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0";
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // Neither this nor the window goes away: what Qt keeps of fonts would count as lost when it does.
    static const auto* application = new QApplication(*argc, *argv);
    (void)application;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static auto& window = *new fenrik::SampleWindow;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    // A reader for which there is nothing in the file only takes time.
    if (bytes.contains("Settings") || bytes.contains("Logging") || bytes.contains("Database"))
        fenrik::CheckSettings(bytes);
    if (bytes.contains("PhoneNumbers"))
        fenrik::CheckPhoneNumbers(bytes);
    if (bytes.contains("frmDiag"))
        window.Restore(bytes);
    if (bytes.contains("Software"))
        fenrik::CheckRegistry(bytes);
    return 0;
}
