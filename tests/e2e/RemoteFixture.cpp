#include "e2e/RemoteFixture.h"

#include "platform/RegistryStore.h"
#include "remote/PipeSettings.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTest>

namespace fenrik {

void RemoteTest::SetUp()
{
    ToolTest::SetUp();
    ASSERT_NO_FATAL_FAILURE(relay.Start());
    QSettings settings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat);
    settings.setValue("Settings/ConnectionType", "3");
    settings.setValue("Settings/RDEnable", "True");
    settings.setValue("Settings/RDRecentProfileKey", "{ANN}");
    const QString path = QLatin1String(PipeSettings::kProfilesPath) + QStringLiteral("{ANN}");
    RegistryStore registry(copy.ConfigFolder() + "/registry.ini");
    registry.CreateKey(path);
    for (const auto& [name, text] : {std::pair("UserName", "Ann"), {"LogonID", "ann-1"}, {"ServerName", "127.0.0.1"}})
        registry.WriteValue(path, name, QString(text));
    registry.WriteValue(path, "ServerPort", relay.Port());
}

void RemoteTest::StartAll(const char* answer, const char* scenario)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.StartAtRelay(relay.Address(), answer, scenario));
    ASSERT_NO_FATAL_FAILURE(StartTool());
}

void RemoteTest::Connect()
{
    boxes.WorkNext("frmPipeUsersDialog", ChooseBob);
    Click("Toolbar", "Connect");
}

void RemoteTest::ChooseBob(QDialog& users)
{
    auto& list = *users.findChild<QListWidget*>("lstUsers");
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.item(0)->text(), "Bob");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    QTest::mouseClick(users.findChild<QPushButton*>("cmdConnect"), Qt::LeftButton);
}

void RemoteTest::StartGranted(const char* scenario)
{
    ASSERT_NO_FATAL_FAILURE(StartAll("--grant", scenario));
    Connect();
    ASSERT_TRUE(Eventually([this] { return Text("txtMsg") == "Bob has granted access to remote network"; }));
    Click("Toolbar", "DetectNodes");
    ASSERT_EQ(Text("txtMsg"), "Nodes Detected");
}

void RemoteTest::ExpectDisconnected()
{
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
    for (const char* key : {"Disconnect", "RDChat", "RDPing", "DetectNodes"})
        EXPECT_FALSE(IsEnabled("Toolbar", key)) << key;
    for (const char* name : {"frmPipeChatDialog", "frmPipeUsersDialog", "frmRDNetLatency"})
        EXPECT_FALSE(Shown(name)) << name;
    EXPECT_FALSE(program->Window()->windowTitle().contains("Piped"));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

QDialog* RemoteTest::Shown(const char* name)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->objectName() == QLatin1String(name))
            return qobject_cast<QDialog*>(window);
    }
    return nullptr;
}

std::string RemoteTest::LabelOf(const char* window, const char* label)
{
    const QDialog* dialog = Shown(window);
    return dialog ? dialog->findChild<QLabel*>(QLatin1String(label))->text().toStdString() : std::string();
}

}  // namespace fenrik
