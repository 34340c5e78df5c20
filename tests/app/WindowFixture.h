#pragma once

#include "FakeVehicle.h"
#include "app/DiagHub.h"
#include "app/MMain.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "app/frmDiag.h"
#include "app/frmError.h"
#include "app/messages/MessageListModel.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"
#include "widgets/MessageListView.h"
#include "widgets/StatusLine.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QInputDialog>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {

/// Answers the real boxes and error dialogs as soon as they are up, and keeps their texts.
class DialogUser {
public:
    DialogUser()
    {
        QObject::connect(&mWatch, &QTimer::timeout, &mWatch, [this] { Look(); });
        mWatch.start(1);
    }

    QStringList seen;
    bool sawHourglass = false;                        ///< over a box
    std::deque<QMessageBox::StandardButton> answers;  ///< of the next boxes; the rest get their default button
    std::deque<QString> inputs;                       ///< into the next input boxes; the rest are cancelled

private:
    void Look()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isVisible())
            return;
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
            seen.append(box->text());
            const QCursor* pointer = QGuiApplication::overrideCursor();
            sawHourglass = sawHourglass || (pointer && pointer->shape() == Qt::WaitCursor);
            Answer(*box);
        } else if (auto* input = qobject_cast<QInputDialog*>(dialog)) {
            seen.append(input->labelText());
            Enter(*input);
        } else if (auto* error = qobject_cast<frmError*>(dialog)) {
            seen.append(error->findChild<QPlainTextEdit*>("tbDetails")->toPlainText());
            error->findChild<QPushButton*>("cmdOk")->click();
        }
    }

    void Answer(QMessageBox& box)
    {
        if (answers.empty()) {
            box.buttons().constFirst()->click();
            return;
        }
        const auto answer = answers.front();
        answers.pop_front();
        box.button(answer)->click();
    }

    void Enter(QInputDialog& input)
    {
        if (inputs.empty()) {
            input.reject();
            return;
        }
        input.setTextValue(inputs.front());
        inputs.pop_front();
        input.accept();
    }

    QTimer mWatch;
};

/// The whole program in a folder of its own, with the built databases and a vehicle on COM5.
class WindowTest : public testing::Test {
protected:
    WindowTest()
    {
        QDir root(dir.path());
        root.mkpath("program");
        root.mkpath("config/ports");
        for (const char* file : {"ncCommand.dav", "SpecialCommands.dav", "fxmaps.dav"})
            EXPECT_TRUE(QFile::copy(QString(FENRIK_BUILT_DATA "/") + file, ProgramFile(file))) << file;
        PlugIn(vehicle);
    }

    [[nodiscard]] QString ProgramFile(const QString& name) const { return dir.filePath("program/" + name); }
    [[nodiscard]] QString SettingsFile() const { return dir.filePath("config/settings.ini"); }

    void PlugIn(const FakeVehicle& other)
    {
        const QString link = dir.filePath("config/ports/com5");
        QFile::remove(link);
        EXPECT_TRUE(QFile::link(other.Path(), link));
    }

    /// Starts the program; `more` are lines of the settings behind those that all tests have.
    bool Start(const QByteArray& more = {}, const QString& comments = {})
    {
        MakeFile(SettingsFile(), "[Settings]\nCommPort=5\nNodesInSystem=3\nFirstRun=False\n" + more);
        const QString none = dir.filePath("none");
        program = std::make_unique<MMain>(MMain::Environment{ProgramFolder(none, dir.filePath("program"), none),
                                                             dir.filePath("config"), VersionInfo(1, 0, 7, comments)});
        return program->Main();
    }

    void StartAndConnect(const QByteArray& more = {})
    {
        ASSERT_TRUE(Start(more));
        Click("Connect");
        ASSERT_EQ(Status(), "Connected");
    }

    [[nodiscard]] frmDiag& Window() { return *program->Window(); }
    [[nodiscard]] CSystem& System() { return Window().System(); }
    [[nodiscard]] QString Status() { return Window().Status().Status(); }
    [[nodiscard]] QString Msg() { return Window().Status().Msg(); }
    [[nodiscard]] QAction& Button(const char* key) { return *Window().Toolbar().Button(key); }
    [[nodiscard]] QAction& Entry(const char* name) { return *Window().Menus().Entry(name); }

    template <typename T>
    [[nodiscard]] T& Control(const char* name)
    {
        return *Window().findChild<T*>(name);
    }

    /// A click with the mouse on the button of the toolbar or of the node bars.
    void Click(const char* key)
    {
        for (const char* bar : {"Toolbar", "Nodebar", "Nodebar17_32"}) {
            auto& toolbar = Control<QToolBar>(bar);
            if (auto* action = toolbar.findChild<QAction*>(key))
                QTest::mouseClick(toolbar.widgetForAction(action), Qt::LeftButton);
        }
    }

    [[nodiscard]] bool Until(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 3000); }

    /// The text of each line of the list.
    [[nodiscard]] QStringList Lines()
    {
        QCoreApplication::processEvents();
        QStringList names;
        const MessageListModel& list = Window().Messages();
        for (int row = 0; row < list.rowCount(); ++row)
            names.append(list.index(row, 0).data().toString());
        return names;
    }

    [[nodiscard]] QString Stored(const QString& key) const
    {
        return QSettings(SettingsFile(), QSettings::IniFormat).value(key).toString();
    }

    QTemporaryDir dir;
    FakeVehicle vehicle;
    DialogUser user;
    std::unique_ptr<MMain> program;
};

}  // namespace fenrik
