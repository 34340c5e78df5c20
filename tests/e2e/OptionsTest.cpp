// Setting the program up through its dialogs alone, and finding all of it after a restart.

#include "e2e/ToolTest.h"
#include "options/PortList.h"
#include "remote/RDMain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString kRestart =
    QStringLiteral("The program will have to be restarted for the protocol change to take effect.");

class OptionsDialogs : public ToolTest {
protected:
    template <typename Widget>
    static Widget& In(QDialog& dialog, const char* name)
    {
        auto* widget = dialog.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }

    /// Works the network options of the toolbar; the work closes them.
    void Network(const std::function<void(QDialog&)>& work)
    {
        boxes.WorkNext(QStringLiteral("frmCommSetup"), work);
        Click("Toolbar", "Port");
    }

    static void Press(QDialog& dialog, const char* button)
    {
        QTest::mouseClick(&In<QPushButton>(dialog, button), Qt::LeftButton);
    }

    static void Check(QDialog& dialog, const char* box)
    {
        In<QCheckBox>(dialog, box).setFocus();
        QTest::keyClick(&In<QCheckBox>(dialog, box), Qt::Key_Space);
    }

    static void ShowTab(QDialog& dialog, int index)
    {
        auto* bar = In<QTabWidget>(dialog, "sstabPortSelection").tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    }

    static void SelectPort(QDialog& dialog, const char* list, int number)
    {
        auto& ports = In<PortList>(dialog, list);
        for (int row = 0; row < ports.count(); ++row) {
            if (ports.item(row)->data(Qt::UserRole).toInt() == number)
                QTest::mouseClick(ports.viewport(), Qt::LeftButton, {}, ports.visualItemRect(ports.item(row)).center());
        }
    }

    static void Type(QDialog& dialog, const char* field, const QString& text)
    {
        auto& box = In<QLineEdit>(dialog, field);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    void FillInProfile()
    {
        boxes.WorkNext(QStringLiteral("frmRemoteSettings"), [](QDialog& editor) {
            Type(editor, "txtField_0", QStringLiteral("Workshop 3"));
            Type(editor, "txtField_1", QStringLiteral("w3"));
            Type(editor, "txtField_2", QStringLiteral("relay.example"));
            Press(editor, "cmdSave");
        });
    }

    /// Each choice that the window has, another one than at the start.
    void SetAll(QDialog& options)
    {
        ShowTab(options, 0);
        SelectPort(options, "lstPorts", 5);
        In<QSlider>(options, "barNodes").setFocus();
        for (int step = 0; step < 4; ++step)
            QTest::keyClick(&In<QSlider>(options, "barNodes"), Qt::Key_Right);
        Check(options, "cbSendSync");
        ShowTab(options, 1);
        SelectPort(options, "lstModemPorts", 5);
        QTest::keyClick(&In<QComboBox>(options, "cmbModemBaudRate"), Qt::Key_Home);
        Type(options, "txtModemInitString", QStringLiteral("ATM0"));
        ShowTab(options, 2);
        Check(options, "cbRDEnable");
        FillInProfile();
        QTest::keyClick(&In<QComboBox>(options, "cboRDProfiles"), Qt::Key_End);
        EXPECT_EQ(In<QComboBox>(options, "cboRDProfiles").currentText(), QStringLiteral("Workshop 3"));
        Check(options, "chkPipeServerIsDefault");
    }

    static void ExpectAll(QDialog& options)
    {
        EXPECT_EQ(In<QTabWidget>(options, "sstabPortSelection").currentIndex(), 2);
        EXPECT_EQ(In<PortList>(options, "lstPorts").SelectedPort(), 5);
        EXPECT_EQ(In<QSlider>(options, "barNodes").value(), 12);
        EXPECT_TRUE(In<QCheckBox>(options, "cbSendSync").isChecked());
        EXPECT_EQ(In<PortList>(options, "lstModemPorts").SelectedPort(), 5);
        EXPECT_EQ(In<QComboBox>(options, "cmbModemBaudRate").currentText(), QStringLiteral("9600"));
        EXPECT_EQ(In<QLineEdit>(options, "txtModemInitString").text(), QStringLiteral("ATM0"));
        EXPECT_TRUE(In<QCheckBox>(options, "cbRDEnable").isChecked());
        EXPECT_EQ(In<QComboBox>(options, "cboRDProfiles").currentText(), QStringLiteral("Workshop 3"));
    }

    void Restart()
    {
        CloseTool();
        SetUp();
        ASSERT_NO_FATAL_FAILURE(StartTool());
    }
};

TEST_F(OptionsDialogs, AllThatIsSetForTheNetworkIsSetAfterARestart)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Network([this](QDialog& options) {
        SetAll(options);
        Press(options, "cmdContinue");
    });
    ASSERT_NO_FATAL_FAILURE(Restart());

    EXPECT_TRUE(IsVisible("Nodebar", "Node12"));
    EXPECT_FALSE(IsVisible("Nodebar", "Node13"));
    Network([](QDialog& options) {
        ExpectAll(options);
        ShowTab(options, 0);
        Check(options, "chkTransceiverIsDefault");
        Press(options, "cmdContinue");
    });
    Click("Toolbar", "Connect");
    EXPECT_EQ(Text("txtStatus"), "Connected");
    CloseTool();
}

TEST_F(OptionsDialogs, TheOlderNetworkAndBack)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Network([](QDialog& options) {
        QTest::keyClick(&In<QComboBox>(options, "CboProtocol"), Qt::Key_Up);
        Press(options, "cmdContinue");
    });
    EXPECT_THAT(boxes.Take(), testing::IsEmpty());  // the very first run
    CloseTool();

    SetUp();
    boxes.WorkNext(QStringLiteral("FrmFileDialog"), [](QDialog& dialog) { dialog.reject(); });
    boxes.AnswerNext(QMessageBox::Ok);   // no database is chosen
    boxes.AnswerNext(QMessageBox::Yes);  // and none shall be
    ASSERT_TRUE(program->Main());
    ASSERT_EQ(program->Window(), nullptr);
    (void)boxes.Take();
    boxes.WorkNext(QStringLiteral("frmCommSetup"), [](QDialog& options) {
        EXPECT_EQ(In<QComboBox>(options, "CboProtocol").currentText(), QStringLiteral("Fenrik 98"));
        QTest::keyClick(&In<QComboBox>(options, "CboProtocol"), Qt::Key_Down);
        Press(options, "cmdContinue");
    });
    QAction* port = nullptr;
    for (auto* action : program->MainWindow()->findChildren<QAction*>(QStringLiteral("Port")))
        port = action;
    ASSERT_NE(port, nullptr);
    port->trigger();
    EXPECT_THAT(boxes.Take(), ElementsAre(kRestart));
    program->MainWindow()->close();
    (void)boxes.Take();
    program.reset();

    SetUp();
    ASSERT_NO_FATAL_FAILURE(StartTool());
    EXPECT_NE(program->Window(), nullptr);
    CloseTool();
}

TEST_F(OptionsDialogs, ToolOptionsAreSetAfterARestart)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    const char* const names[] = {"ChkAutoDetect", "ChkListAllMsgs", "ChkCompactList", "ChkHex"};
    boxes.WorkNext(QStringLiteral("FrmOptions"), [&names](QDialog& options) {
        for (const char* name : names)
            Check(options, name);
        QTest::keyClick(&options, Qt::Key_Escape);
    });
    Click("Toolbar", "Harnwick");
    ASSERT_NO_FATAL_FAILURE(Restart());
    boxes.WorkNext(QStringLiteral("FrmOptions"), [&names](QDialog& options) {
        EXPECT_FALSE(In<QCheckBox>(options, names[0]).isChecked());
        for (const char* name : {names[1], names[2], names[3]})
            EXPECT_TRUE(In<QCheckBox>(options, name).isChecked()) << name;
        options.close();
    });
    Click("Toolbar", "Harnwick");
    CloseTool();
}

TEST_F(OptionsDialogs, AboutTellsOfTheDatabasesInUse)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    boxes.WorkNext(QStringLiteral("frmAbout"), [](QDialog& about) {
        QTest::mouseClick(&In<QWidget>(about, "lDatabaseInfo"), Qt::LeftButton);
        QTest::keyClick(&about, Qt::Key_Escape);
    });
    Click("Toolbar", "About");
    const QStringList shown = boxes.Take();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_THAT(shown[0].toStdString(), HasSubstr("Default Fenrik Command Database\nDatabase Version: \t1.0\n"));
    EXPECT_THAT(shown[0].toStdString(), HasSubstr("Special Commands Database\n"));
    EXPECT_THAT(shown[0].toStdString(), HasSubstr((copy.ProgramFolder() + "/SpecialCommands.dav").toStdString()));
    CloseTool();
}

}  // namespace
}  // namespace fenrik
