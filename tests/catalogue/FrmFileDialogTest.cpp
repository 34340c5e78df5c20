#include "catalogue/FrmFileDialog.h"

#include "DialogFixture.h"
#include "SystemFolder.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

#include <QComboBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kQuestion = "Without a valid system database selected \n"
                                  "the FenrikII Diagnostics cannot connect to the Fenrik system.\n\n"
                                  "Do you still want to close this form ?";

class FileDialog : public DialogFixture {
protected:
    FileDialog()
    {
        Legacy(folder.Program("Old.dav"), "'Fire Truck 7', '5/6/1998', 'R. Miller'");
        Legacy(folder.Stick("Blank.dav"), "NULL, NULL, NULL");
        MakeFile(folder.Program("notes.txt"), "no database");
        QDir(folder.ProgramFolder()).mkpath("deep/er");
    }

    static void Legacy(const QString& path, const char* info)
    {
        MakeDatabase(path, {"CREATE TABLE Info (SystemName TEXT, DateCreated TEXT, CreatedBy TEXT)",
                            QString("INSERT INTO Info VALUES (%1)").arg(info),
                            "CREATE TABLE System (message INTEGER, name TEXT)"});
    }

    void Preset(const QString& name)
    {
        settings.DatabasePath = folder.ProgramFolder();
        settings.DatabaseName = name;
    }

    void Open()
    {
        const std::vector<Volume> volumes{{"Home", folder.ProgramFolder()}, {"Stick", QDir::cleanPath(folder.Stick())}};
        Show(std::make_unique<FrmFileDialog>(settings, folder.ProgramFolder(), boxes, check, volumes));
    }

    void ClickText(const char* name, const QString& text, bool twice = false) const
    {
        auto& list = Find<QListWidget>(name);
        const QPoint point = list.visualItemRect(list.findItems(text, Qt::MatchExactly).constFirst()).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, point);
        if (twice)
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, point);
    }

    void ChooseDrive(int position) const
    {
        auto& drives = Find<QComboBox>("Drive1");
        drives.setCurrentIndex(position);
        Q_EMIT drives.activated(position);
    }

    SystemFolder folder;
    Settings settings;
    BoxRecorder boxes;
    FrmFileDialog::Check check = [](const QString&) { return QString(); };
};

TEST_F(FileDialog, ShowsFolderAndFileOfThePresentDatabase)
{
    Preset("Old.dav");
    Open();
    EXPECT_EQ(Label("lblName"), "Old.dav");
    EXPECT_EQ(Find<QWidget>("lblPath").toolTip(), folder.ProgramFolder());
    EXPECT_EQ(Find<QListWidget>("File1").currentItem()->text(), "Old.dav");
    EXPECT_EQ(Label("lblsystem"), "Fire Truck 7");
    EXPECT_EQ(Label("lblDate"), "5/6/1998");
    EXPECT_EQ(Label("lblBy"), "R. Miller");
    EXPECT_EQ(Find<QComboBox>("Drive1").currentText(), "Home");
}

TEST_F(FileDialog, BeginsInTheGivenFolderWithoutADatabase)
{
    Open();
    EXPECT_THAT(Texts("File1"), ElementsAre("ncCommand.dav", "notes.txt", "Old.dav"));
    EXPECT_THAT(Texts("Dir1"), ElementsAre("..", "deep"));
    EXPECT_EQ(Label("lblName"), "");
}

TEST_F(FileDialog, AFolderLongerThanTheLabelIsShortenedAtItsFront)
{
    QString deep = folder.ProgramFolder();
    for (int level = 0; level < 20; ++level)
        deep += "/quite a long name";
    QDir().mkpath(deep);
    settings.DatabasePath = deep;
    Open();
    const QString text = Label("lblPath");
    EXPECT_TRUE(text.startsWith(" .../quite a long name"));
    EXPECT_TRUE(deep.endsWith(text.mid(4)));
    const auto& label = Find<QLabel>("lblPath");
    EXPECT_LE(label.fontMetrics().horizontalAdvance(text), label.width());
    dialog->resize(dialog->width() + 400, dialog->height());
    QCoreApplication::processEvents();
    EXPECT_GT(Label("lblPath").size(), text.size());
}

TEST_F(FileDialog, AClickOnAFileShowsWhatItTells)
{
    Open();
    ClickText("File1", "Old.dav");
    EXPECT_EQ(Label("lblName"), "Old.dav");
    EXPECT_EQ(Label("lblsystem"), "Fire Truck 7");
}

TEST_F(FileDialog, WhatIsNullWasNotEntered)
{
    Open();
    ChooseDrive(1);
    ClickText("File1", "Blank.dav");
    for (const char* label : {"lblsystem", "lblDate", "lblBy"})
        EXPECT_EQ(Label(label), "< Not Entered >") << label;
}

TEST_F(FileDialog, ATableWithoutRowsTellsNothing)
{
    MakeDatabase(folder.Program("norow.dav"),
                 {"CREATE TABLE Info (SystemName TEXT, DateCreated TEXT, CreatedBy TEXT)"});
    Open();
    ClickText("File1", "norow.dav");
    EXPECT_EQ(Label("lblsystem"), "< Not Entered >");
}

TEST_F(FileDialog, FoldersAreEnteredAndLeftByDoubleClick)
{
    Open();
    ClickText("Dir1", "deep", true);
    EXPECT_THAT(Texts("Dir1"), ElementsAre("..", "er"));
    EXPECT_THAT(Texts("File1"), IsEmpty());
    ClickText("Dir1", "..", true);
    EXPECT_THAT(Texts("Dir1"), ElementsAre("..", "deep"));
    EXPECT_EQ(Find<QListWidget>("Dir1").currentItem()->text(), "deep");
}

TEST_F(FileDialog, IsWorkedByKeysAlone)
{
    Open();
    Find<QWidget>("Dir1").setFocus();
    Find<QListWidget>("Dir1").setCurrentRow(1);
    QTest::keyClick(&Find<QWidget>("Dir1"), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_THAT(Texts("Dir1"), ElementsAre("..", "er"));
    QTest::keyClick(&Find<QWidget>("Dir1"), Qt::Key_Return);
    QTest::keyClick(dialog.get(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Find<QWidget>("File1").hasFocus());
    QTest::keyClick(&Find<QWidget>("File1"), Qt::Key_O);
    EXPECT_EQ(Label("lblName"), "Old.dav");
    QTest::keyClick(dialog.get(), Qt::Key_K, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !dialog->isVisible(); }));  // a button is seen going down and up
    EXPECT_EQ(settings.DatabaseName, "Old.dav");
}

TEST_F(FileDialog, ClosingWithAFileChosenTakesItWithoutAQuestion)
{
    Open();
    ChooseDrive(1);
    ClickText("File1", "Blank.dav");
    dialog->close();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(settings.DatabasePath, QDir::cleanPath(folder.Stick()));
    EXPECT_EQ(settings.DatabaseName, "Blank.dav");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(FileDialog, TheDatabasesOwnWordsAreKeptWithIt)
{
    Open();
    ClickText("File1", "Old.dav", true);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(settings.DatabaseSystemName, "Fire Truck 7");
    EXPECT_EQ(settings.DatabaseCreated, "5/6/1998");
    EXPECT_EQ(settings.DatabaseBy, "R. Miller");
}

TEST_F(FileDialog, ClosingAtOnceKeepsThePresentDatabase)
{
    Preset("Old.dav");
    Open();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(settings.DatabaseName, "Old.dav");
}

TEST_F(FileDialog, ClosingWithoutAFileAsksAndNoKeepsItOpen)
{
    Open();
    boxes.answers = {QMessageBox::No};
    dialog->close();
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, kQuestion);
    EXPECT_EQ(boxes.boxes[0].title, "Select Database");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(FileDialog, ClosingWithoutAFileAndYesClearsTheDatabase)
{
    Preset("gone.dav");
    settings.DatabaseBy = "R. Miller";
    Open();
    boxes.answers = {QMessageBox::Yes};
    QTest::mouseClick(&Find<QWidget>("cmdOk"), Qt::LeftButton);
    EXPECT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(settings.DatabasePath, "");
    EXPECT_EQ(settings.DatabaseName, "");
    EXPECT_EQ(settings.DatabaseBy, "");
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(FileDialog, AFileOfAnotherKindIsNoChoice)
{
    MakeFile(folder.Program("cut.dav"), "SQLite format 3");
    Open();
    for (const char* name : {"notes.txt", "ncCommand.dav", "cut.dav"}) {
        ClickText("File1", name);
        EXPECT_EQ(Label("lblsystem"), "This is no system database.") << name;
        EXPECT_EQ(Label("lblBy"), "") << name;
    }
    boxes.answers = {QMessageBox::No};
    dialog->close();
    EXPECT_EQ(boxes.boxes.size(), 1U);
}

TEST_F(FileDialog, AFileThatTheCheckRefusesIsToldWhenItIsClicked)
{
    check = [this](const QString& path) { return path == folder.Program("Old.dav") ? "Not that one" : ""; };
    Open();
    ClickText("File1", "Old.dav");
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, "Not that one");
    EXPECT_EQ(Label("lblsystem"), "This is no system database.");
    boxes.answers = {QMessageBox::Yes};
    dialog->close();
    EXPECT_EQ(boxes.boxes[1].text, kQuestion) << "it is not chosen";
    EXPECT_EQ(settings.DatabaseName, "");
}

TEST_F(FileDialog, AFileThatTheCheckRefusesIsToldByTheKeysOnlyWhenItIsEntered)
{
    check = [](const QString&) { return "Not that one"; };
    Open();
    Find<QWidget>("File1").setFocus();
    QTest::keyClick(&Find<QWidget>("File1"), Qt::Key_O);
    EXPECT_EQ(Label("lblName"), "Old.dav");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    QTest::keyClick(&Find<QWidget>("File1"), Qt::Key_Return);
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, "Not that one");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(FileDialog, LeavingTheFolderGivesTheFileUp)
{
    Preset("Old.dav");
    Open();
    ChooseDrive(1);
    EXPECT_EQ(Label("lblName"), "");
    EXPECT_EQ(Label("lblsystem"), "");
}

TEST_F(FileDialog, AFolderThatHasGoneIsLeftEmpty)
{
    Open();
    QDir(folder.Program("deep")).removeRecursively();
    ClickText("Dir1", "deep", true);
    EXPECT_THAT(Texts("Dir1"), ElementsAre(".."));
    EXPECT_THAT(Texts("File1"), IsEmpty());
}

}  // namespace
}  // namespace fenrik
