#include "app/ErrorDialog.h"

#include "AppFixture.h"
#include "app/frmError.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ErrorDialogTest : public AppTest {
protected:
    /// Reports an error and answers its dialog, after `look` has seen it.
    void Report(
        int number, const QString& description, const std::function<void(frmError&)>& look = [](frmError&) {})
    {
        QTimer::singleShot(0, &context, [this, look] {
            auto* dialog = qobject_cast<frmError*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            ++dialogs;
            look(*dialog);
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
        });
        reporter.ShowError(number, description, "MMain:Main");
    }

    [[nodiscard]] QString LogFile() const
    {
        QFile file(dir.filePath("DiagErr.log"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    [[nodiscard]] QString Now() const { return QLocale().toString(clock.Now().DateTime(), QLocale::ShortFormat); }

    QObject context;
    int dialogs = 0;
    ErrorDialog reporter{folder, version, clock, boxes};
};

TEST_F(ErrorDialogTest, TheDialogTellsTheErrorInItsOwnWords)
{
    Report(13, "Type mismatch", [this](frmError& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Software Error");
        const std::vector<std::pair<const char*, const char*>> labels{
            {"lblTitle", "Fenrik Diagnostics 1.0.7"},
            {"lblOpps", "Oops . . ."},
            {"lblStepped", "We thought we stepped on all these little guys, guess not!"},
            {"lblExplain", "FenrikII Diagnostics ran into a glitch, since it's nothing you have done its up to us to "
                           "fix it!"},
            {"lblBugLog", "The bug has been logged to a file that can be e-mailed to us for a closer look!"}};
        for (const auto& [name, text] : labels)
            EXPECT_EQ(dialog.findChild<QLabel*>(name)->text(), text);
        EXPECT_EQ(dialog.findChild<QPushButton*>("cmdOk")->text(), "O&k");
        EXPECT_FALSE(dialog.findChild<QLabel*>("imgBug")->pixmap().isNull());
        // The file named here is not the one that is written; it is quoted in users' instructions.
        EXPECT_EQ(dialog.findChild<QPlainTextEdit*>("tbDetails")->toPlainText(),
                  Now() + "\n>> Error <13> Type mismatch\nMMain:Main\nLog is located @ " +
                      QDir::toNativeSeparators(dir.filePath("Error.log")));
    });
    EXPECT_EQ(dialogs, 1);
}

TEST_F(ErrorDialogTest, TwoErrorsGiveTwoDialogsAndTwoEntries)
{
    Report(13, "Type mismatch");
    Report(9, "Subscript out of range");
    EXPECT_EQ(dialogs, 2);
    const auto entry = [this](const QString& error) {
        return "\nFenrikII Diagnostics\n" + Now() + "\n>> Error <" + error + " @ MMain:Main\n";
    };
    EXPECT_EQ(LogFile(), entry("13> Type mismatch") + entry("9> Subscript out of range"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(ErrorDialogTest, AFileThatCannotBeWrittenGivesASecondBox)
{
    QDir(dir.path()).mkdir("DiagErr.log");  // a folder stands in its place
    Report(13, "Type mismatch");
    EXPECT_EQ(dialogs, 1);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].title, "A Software Error Has Occured!");
    EXPECT_TRUE(boxes.boxes[0].text.contains("75")) << boxes.boxes[0].text.toStdString();
    EXPECT_TRUE(boxes.boxes[0].text.contains("Path/File access error")) << boxes.boxes[0].text.toStdString();
}

TEST_F(ErrorDialogTest, ThePointerIsNormalWhileTheDialogIsUp)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Report(13, "Type mismatch",
           [](frmError&) { EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor); });
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor) << "the section's own end takes it away";
    QGuiApplication::restoreOverrideCursor();
}

TEST_F(ErrorDialogTest, TimersGoOnWhileTheDialogIsUp)
{
    QTimer timer;
    int ticks = 0;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&ticks] { ++ticks; });
    timer.start(0);
    Report(13, "Type mismatch", [&ticks](frmError&) { EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks > 3; })); });
    EXPECT_GT(ticks, 3);
}

TEST_F(ErrorDialogTest, DetailsFlipBetweenTwoSizes)
{
    frmError dialog(version, "one\ntwo");
    dialog.show();
    auto* button = dialog.findChild<QPushButton*>("cmdDetails");
    auto* details = dialog.findChild<QPlainTextEdit*>("tbDetails");
    const int width = dialog.width();
    const int small = dialog.height();
    EXPECT_EQ(button->text(), ">> Details >>");
    EXPECT_FALSE(details->isVisible());

    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(button->text(), "<< Details <<");
    EXPECT_TRUE(details->isVisible());
    EXPECT_GE(dialog.height(), small + details->minimumHeight());

    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(button->text(), ">> Details >>");
    EXPECT_FALSE(details->isVisible());
    EXPECT_EQ(dialog.height(), small);
    EXPECT_EQ(dialog.width(), width) << "only the height flips";
}

}  // namespace
}  // namespace fenrik
