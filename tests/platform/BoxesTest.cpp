#include "platform/Boxes.h"

#include "support/Printers.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

/// Runs `answer` with the box of that type as soon as one is open.
template <typename Box>
void Answer(const std::function<void(Box&)>& answer)
{
    auto* poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer] {
        if (auto* box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
            poll->deleteLater();
            poll->stop();
            answer(*box);
        }
    });
    poll->start(0);
}

TEST(Boxes, AMessageBoxShowsExactlyWhatIsAskedFor)
{
    Answer<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("MsgBox"));
        EXPECT_EQ(box.text(), QStringLiteral("Loading <fxmaps.dav>\nfailed"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("A title"));
        EXPECT_EQ(box.standardButtons(), QMessageBox::Retry | QMessageBox::Cancel);
        box.button(QMessageBox::Retry)->click();
    });
    EXPECT_EQ(Boxes().MsgBox("Loading <fxmaps.dav>\nfailed", QMessageBox::Warning,
                             QMessageBox::Retry | QMessageBox::Cancel, "A title"),
              QMessageBox::Retry);
}

TEST(Boxes, AMessageBoxHasTheProgramsTitleAndAnOkButtonUnlessToldOtherwise)
{
    Answer<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Fenrik Diagnostics"));
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(Boxes().MsgBox("text"), QMessageBox::Ok);
}

TEST(Boxes, EscapeIsCancelWhereThereIsACancelButton)
{
    Answer<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(Boxes().MsgBox("text", QMessageBox::Question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel),
              QMessageBox::Cancel);
}

TEST(Boxes, AnInputBoxGivesTheTextEntered)
{
    Answer<QInputDialog>([](QInputDialog& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("InputBox"));
        EXPECT_EQ(box.labelText(), QStringLiteral("Name?"));
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Fenrik Diagnostics"));
        EXPECT_EQ(box.textValue(), QStringLiteral("before"));
        box.setTextValue("after");
        box.accept();
    });
    EXPECT_EQ(Boxes().InputBox("Name?", {}, "before"), QStringLiteral("after"));
}

TEST(Boxes, AnInputBoxHasRoomForItsTitleAndAName)
{
    const QString title = QStringLiteral("Save System Information");
    Answer<QInputDialog>([&title](QInputDialog& box) {
        QFont bold = box.font();
        bold.setBold(true);
        const int buttonsOfTheFrame = 4 * box.fontMetrics().height();
        EXPECT_GE(box.width(), QFontMetrics(bold).horizontalAdvance(title) + buttonsOfTheFrame);
        EXPECT_GE(box.findChild<QLineEdit*>()->width(), box.fontMetrics().averageCharWidth() * 40);
        box.reject();
    });
    EXPECT_EQ(Boxes().InputBox("Name?", title, {}), QString());
}

TEST(Boxes, ACancelledInputBoxGivesNoText)
{
    Answer<QInputDialog>([](QInputDialog& box) { box.reject(); });
    EXPECT_EQ(Boxes().InputBox("Name?", "Title", "before"), QString());
}

TEST(Boxes, AFileBoxGivesAnExistingFile)
{
    QTemporaryDir folder;
    const QString path = folder.path() + QStringLiteral("/run.fds");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));

    Answer<QFileDialog>([&path](QFileDialog& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("FileBox"));
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Open"));
        EXPECT_EQ(box.nameFilters(), QStringList{QStringLiteral("Scripts (*.fds)")});
        EXPECT_TRUE(box.testOption(QFileDialog::DontUseNativeDialog));
        box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        QMetaObject::invokeMethod(&box, "accept");
    });
    EXPECT_EQ(Boxes().OpenFileBox("Open", "Scripts (*.fds)", folder.path()), path);
}

TEST(Boxes, ACancelledFileBoxGivesNoFile)
{
    Answer<QFileDialog>([](QFileDialog& box) { box.reject(); });
    EXPECT_EQ(Boxes().OpenFileBox("Open", "All (*)"), QString());
}

}  // namespace
}  // namespace fenrik
