#pragma once

#include "options/OptionsHost.h"
#include "options/PortList.h"
#include "options/frmCommSetup.h"
#include "platform/SettingsStore.h"
#include "remote/ProfilesFixture.h"
#include "remote/RDMain.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "support/PortFolder.h"
#include "support/PseudoTerminal.h"
#include "support/ScriptedPump.h"
#include "support/WhenShown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTest>

#include <memory>

namespace fenrik {

/// Keeps what an option window asks of the main window.
class OptionsHostRecorder : public OptionsHost {
public:
    void WriteSettings() override { calls.append("write"); }
    void ApplyNodesInSystem() override { calls.append("nodes"); }
    void ShowHexData() override { calls.append("hex"); }
    void ShowCategories() override { calls.append("categories"); }

    QStringList calls;
};

/// "Network Options" over three serial ports: COM3, COM5 and COM12.
class CommSetupTest : public ProfilesTest {
protected:
    CommSetupTest()
    {
        options.CommPort = 5;
        options.NodesInSystem = 8;
        options.Protocol = "Fenrik 2000";
        options.ModemCommPort = 12;
        options.ModemBaudRate = 57600;
        options.ConnectionType = 1;
        portFolder.Link(3, first.Path());
        portFolder.Link(5, second.Path());
        portFolder.Link(12, third.Path());
    }

    void Open()
    {
        remote.LoadRDSettings();
        dialog = std::make_unique<frmCommSetup>(
            frmCommSetup::Parts{options, run, remote, settings, ports, port, boxes, errors, pump, host});
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    /// Opens with these profiles stored, `current` in use.
    void OpenWith(const CPipeProfiles& profiles, const QString& current)
    {
        (void)settings.SaveProfiles(profiles);
        texts.SaveSetting("Settings", "RDEnable", "True");
        texts.SaveSetting("Settings", "RDRecentProfileKey", current);
        Open();
    }

    template <typename T>
    [[nodiscard]] T& Control(const char* name)
    {
        return *dialog->findChild<T*>(name);
    }
    [[nodiscard]] QCheckBox& Check(const char* name) { return Control<QCheckBox>(name); }
    [[nodiscard]] QComboBox& Combo(const char* name) { return Control<QComboBox>(name); }
    [[nodiscard]] QLineEdit& Text(const char* name) { return Control<QLineEdit>(name); }
    [[nodiscard]] PortList& Ports(const char* name = "lstPorts") { return Control<PortList>(name); }

    void ShowTab(int index) { Control<QTabWidget>("sstabPortSelection").setCurrentIndex(index); }

    [[nodiscard]] QStringList Rows(const char* list = "lstPorts")
    {
        QStringList rows;
        for (int row = 0; row < Ports(list).count(); ++row)
            rows.append(Ports(list).item(row)->text());
        return rows;
    }

    /// The text of the selected row, "" for none.
    [[nodiscard]] QString Selected(const char* list = "lstPorts")
    {
        const auto items = Ports(list).selectedItems();
        return items.isEmpty() ? QString() : items.constFirst()->text();
    }

    void ClickRow(int row, const char* list = "lstPorts")
    {
        PortList& rows = Ports(list);
        QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, rows.visualItemRect(rows.item(row)).center());
    }

    void Press(const char* button) { QTest::mouseClick(&Control<QPushButton>(button), Qt::LeftButton); }

    /// Chooses a row of a list box as a user does.
    void Choose(const char* combo, int row)
    {
        Combo(combo).setCurrentIndex(row);
        Q_EMIT Combo(combo).activated(row);
    }

    [[nodiscard]] QStringList BoxTexts() const
    {
        QStringList shown;
        for (const BoxRecorder::Box& box : boxes.boxes)
            shown.append(box.text);
        return shown;
    }

    Settings options;
    RunState run;
    SettingsStore texts{folder.path() + QStringLiteral("/settings.ini")};
    RDMain remote{settings, texts};
    ScriptedPump pump{clock};
    PseudoTerminal first;
    PseudoTerminal second;
    PseudoTerminal third;
    PortFolder portFolder;
    ComPorts ports = portFolder.Ports();
    SerialControl port{ports};
    OptionsHostRecorder host;
    std::unique_ptr<frmCommSetup> dialog;
};

}  // namespace fenrik
