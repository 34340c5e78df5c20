#include "e2e/ToolTest.h"

#include "e2e/RunUntil.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace fenrik {

using testing::IsEmpty;

namespace {

constexpr int kPatienceMs = 30'000;

}  // namespace

void ToolTest::SetUp()
{
    const QString folder = copy.ProgramFolder();
    program = std::make_unique<MMain>(MMain::Environment{ProgramFolder(folder, folder, folder), copy.ConfigFolder(),
                                                         VersionInfo(1, 0, 1, QString())});
}

void ToolTest::TearDown()
{
    EXPECT_THAT(boxes.Take(), IsEmpty());
    EXPECT_FALSE(copy.HasErrorLog());
}

void ToolTest::SetNodes(int count)
{
    QSettings settings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat);
    settings.setValue("Settings/NodesInSystem", QString::number(count));
}

void ToolTest::StartTool()
{
    ASSERT_TRUE(program->Main());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(program->MainWindow(), kPatienceMs));
}

void ToolTest::StartConnected(const char* scenario)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start(scenario));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    ASSERT_EQ(Text("txtStatus"), "Connected");
    ASSERT_EQ(Text("txtMsg"), "Nodes Detected");
}

void ToolTest::CloseTool()
{
    program->MainWindow()->close();
    program.reset();
}

QAction& ToolTest::Action(const char* bar, const char* key) const
{
    auto* action = Find<QToolBar>(bar).findChild<QAction*>(QLatin1String(key));
    EXPECT_NE(action, nullptr) << key;
    return *action;
}

void ToolTest::Click(const char* bar, const char* key)
{
    QWidget* button = Find<QToolBar>(bar).widgetForAction(&Action(bar, key));
    ASSERT_TRUE(button->isVisible() && button->isEnabled()) << key;
    QTest::mouseClick(button, Qt::LeftButton);
    QCoreApplication::processEvents();  // the list shows its last lines when the event loop turns
}

void ToolTest::ClickNode(int number)
{
    Click("Nodebar", ("Node" + std::to_string(number)).c_str());
}

void ToolTest::DownloadNode(int number)
{
    ClickNode(number);
    boxes.AnswerNext(QMessageBox::Yes);
    Click("Toolbar", "Refresh");
}

bool ToolTest::IsEnabled(const char* bar, const char* key) const
{
    return Action(bar, key).isEnabled();
}

bool ToolTest::IsVisible(const char* bar, const char* key) const
{
    return Action(bar, key).isVisible();
}

std::string ToolTest::Text(const char* label) const
{
    return Find<QLabel>(label).text().toStdString();
}

std::string ToolTest::Face(const char* name, const char* property) const
{
    return Find<QWidget>(name).property(property).toString().toStdString();
}

QAbstractItemModel& ToolTest::List() const
{
    return *Find<QAbstractItemView>("lvMessages").model();
}

int ToolTest::LineCount() const
{
    return List().rowCount();
}

std::string ToolTest::Line(int row) const
{
    constexpr int kIconRole = Qt::UserRole + 1;
    const QAbstractItemModel& list = List();
    QStringList fields;
    for (const char* title : {"Message", "State", "Three-Way", "Data", "Raw"}) {
        int column = 0;
        while (column < list.columnCount() && list.headerData(column, Qt::Horizontal) != QLatin1String(title))
            ++column;
        fields.append(list.index(row, column).data().toString());
    }
    fields.append(list.index(row, 0).data(kIconRole).toString());
    return fields.join(QLatin1Char('|')).toStdString();
}

std::vector<std::string> ToolTest::LinesFrom(int row) const
{
    std::vector<std::string> lines;
    for (; row < LineCount(); ++row)
        lines.push_back(Line(row));
    return lines;
}

bool ToolTest::Eventually(const std::function<bool()>& holds)
{
    return RunUntil(holds, kPatienceMs);
}

}  // namespace fenrik
