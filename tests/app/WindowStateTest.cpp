#include "app/WindowState.h"

#include "WindowFixture.h"
#include "platform/SettingsStore.h"

#include <QHeaderView>
#include <QSplitter>
#include <QTreeWidget>

namespace fenrik {
namespace {

using testing::ElementsAre;

const QRect kScreen(0, 0, 1024, 768);

class WindowStateTest : public testing::Test {
protected:
    /// A window with a splitter of two parts, the lower one a list of three columns.
    struct Sample {
        Sample()
        {
            window.setObjectName("Sample");
            splitter = new QSplitter(Qt::Vertical);
            splitter->setObjectName("Splitter");
            splitter->addWidget(new QWidget);
            list = new QTreeWidget;
            list->setObjectName("lvList");
            list->setColumnCount(3);
            splitter->addWidget(list);
            window.setCentralWidget(splitter);
            window.resize(1280, 800);
        }
        QMainWindow window;
        QSplitter* splitter;
        QTreeWidget* list;
    };

    void Store(const char* key, const char* numbers) { store.SaveSetting("Sample", key, numbers); }

    [[nodiscard]] QRect Place(const QList<QRect>& screens = {kScreen})
    {
        Sample sample;
        WindowState(store, screens).Restore(sample.window);
        return sample.window.geometry();
    }

    QTemporaryDir dir;
    SettingsStore store{dir.filePath("window.ini")};
};

TEST_F(WindowStateTest, PlaceSplitterAndColumnsAreThereInTheNextRun)
{
    {
        Sample sample;
        sample.window.setGeometry(30, 60, 700, 500);
        sample.window.show();
        sample.splitter->setSizes({120, 380});
        sample.list->header()->resizeSection(0, 222);
        sample.list->header()->resizeSection(1, 77);
        WindowState(store, {kScreen}).Save(sample.window);
    }
    Sample next;
    SettingsStore file(store.Path());
    WindowState(file, {kScreen}).Restore(next.window);
    next.window.show();
    EXPECT_EQ(next.window.geometry(), QRect(30, 60, 700, 500));
    EXPECT_NEAR(next.splitter->sizes()[0], 120, 5);
    EXPECT_EQ(next.list->header()->sectionSize(0), 222);
    EXPECT_EQ(next.list->header()->sectionSize(1), 77);
}

TEST_F(WindowStateTest, AMaximizedWindowIsMaximizedAgain)
{
    Store("Window", "10,50,600,400,1");
    Sample sample;
    WindowState(store, {kScreen}).Restore(sample.window);
    EXPECT_TRUE(sample.window.isMaximized());
}

TEST_F(WindowStateTest, AWindowThatIsLargerThanItsScreenShrinks)
{
    EXPECT_EQ(Place().size(), QSize(1024, 732));
    EXPECT_EQ(Place({}).size(), QSize(1280, 800));
    Store("Window", "0,36,5000,4000,0");
    EXPECT_EQ(Place().size(), QSize(1024, 732));
}

struct Placed {
    const char* stored;
    QRect shown;
};

TEST_F(WindowStateTest, AWindowOutsideOfAllScreensComesBack)
{
    for (const Placed& row :
         {Placed{"5000,100,600,400,0", {424, 100, 600, 400}}, Placed{"-900,-700,600,400,0", {0, 36, 600, 400}},
          Placed{"100,700,600,400,0", {100, 368, 600, 400}}}) {
        Store("Window", row.stored);
        EXPECT_EQ(Place(), row.shown) << row.stored;
    }
}

TEST_F(WindowStateTest, AWindowThatWasSavedWithoutASizeIsWhollyOnItsScreen)
{
    for (const char* stored : {"5000,5000,0,0,0", "500,700,-90,-90,0"}) {
        Store("Window", stored);
        Sample sample;
        sample.window.setMinimumSize(300, 200);
        WindowState(store, {kScreen}).Restore(sample.window);
        EXPECT_TRUE(kScreen.contains(sample.window.geometry())) << stored;
        EXPECT_EQ(sample.window.size(), QSize(300, 200)) << stored;
    }
}

TEST_F(WindowStateTest, AWindowStaysOnASecondScreenAsLongAsThereIsOne)
{
    const QRect second(1024, 0, 1024, 768);
    Store("Window", "1100,100,600,400,0");
    EXPECT_EQ(Place({kScreen, second}), QRect(1100, 100, 600, 400));
    EXPECT_EQ(Place({kScreen}), QRect(424, 100, 600, 400));
}

TEST_F(WindowStateTest, WhatIsNoListOfNumbersIsLeftOut)
{
    for (const char* text : {"", "wide", "1,2", "1,2,3,4,5,6", "10,x,600,400,0", "99999999999,1,1,1,1",
                             "2147483647,36,2147483647,400,0", "0,-2147483648,600,-2147483648,0"}) {
        Store("Window", text);
        EXPECT_EQ(Place().size(), QSize(1024, 732)) << text;
    }
    Store("Splitter", "1");
    Store("lvList", "200,100");
    Sample sample;
    const int width = sample.list->header()->sectionSize(0);
    WindowState(store, {kScreen}).Restore(sample.window);
    EXPECT_EQ(sample.list->header()->sectionSize(0), width);
}

TEST_F(WindowStateTest, AColumnIsNeverTooNarrowToBeCaught)
{
    Store("lvList", "-5,0,90");
    Sample sample;
    WindowState(store, {kScreen}).Restore(sample.window);
    EXPECT_EQ(sample.list->header()->sectionSize(0), sample.list->header()->minimumSectionSize());
    EXPECT_EQ(sample.list->header()->sectionSize(1), sample.list->header()->minimumSectionSize());
}

class WindowPlaceTest : public WindowTest {};

TEST_F(WindowPlaceTest, TheMainWindowKeepsItsPlaceInAFileOfItsOwn)
{
    ASSERT_TRUE(Start());
    Window().setGeometry(20, 40, 1111, 777);
    Window().MessageList().Header()->resizeSection(0, 333);
    Control<QSplitter>("Splitter").setSizes({300, 400});
    QCoreApplication::processEvents();
    const QList<int> sizes = Control<QSplitter>("Splitter").sizes();
    Window().close();
    program.reset();
    ASSERT_TRUE(QFile::exists(dir.filePath("config/window.ini")));

    ASSERT_TRUE(Start());
    QCoreApplication::processEvents();
    EXPECT_EQ(Window().geometry(), QRect(20, 40, 1111, 777));
    EXPECT_EQ(Window().MessageList().Header()->sectionSize(0), 333);
    EXPECT_EQ(Control<QSplitter>("Splitter").sizes(), sizes);
}

TEST_F(WindowPlaceTest, TheVeryFirstStartSaysWhatToDo)
{
    ASSERT_TRUE(Start("FirstRun=True\n"));
    EXPECT_EQ(Msg(), "Welcome! Plug in the transceiver, choose its port in \"Network options\" (Ctrl+N), then press "
                     "\"Connect\" (Ctrl+K).");
    Window().close();
    program.reset();
    ASSERT_TRUE(Start());
    EXPECT_EQ(Msg(), "");
}

TEST_F(WindowPlaceTest, TheComposerNeedsTheWidthOfOneHalfOnly)
{
    ASSERT_TRUE(Start());
    auto& composer = Control<QWidget>("PicMsgcenter");
    Window().resize(1200, 800);
    QCoreApplication::processEvents();
    const int oneRow = composer.height();
    QFont large = QApplication::font();
    large.setPointSize(18);
    Window().setFont(large);
    Window().resize(1000, 700);
    QCoreApplication::processEvents();
    EXPECT_LE(Window().width(), 1000);
    EXPECT_GT(composer.height(), 2 * oneRow * 3 / 4);
    for (const char* name : {"CboCategory", "CboCommand", "cmdState", "cmdExtended", "TxtData", "cmdSend"}) {
        auto& control = Control<QWidget>(name);
        EXPECT_TRUE(composer.rect().contains(control.geometry())) << name;
    }
}

}  // namespace
}  // namespace fenrik
