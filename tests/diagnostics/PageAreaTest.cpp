#include "diagnostics/PageArea.h"

#include <QCoreApplication>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

/// A page with a long text, which is wrapped, over a line and a view that takes what is left.
class PageAreaTest : public testing::Test {
protected:
    PageAreaTest()
    {
        text->setWordWrap(true);
        rest->setMinimumHeight(40);
        rest->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        auto* layout = new QVBoxLayout(page);
        layout->addWidget(text);
        layout->addWidget(line);
        layout->addWidget(rest, 1);
    }

    void Show(const QSize& size)
    {
        area.resize(size);
        area.show();
        QCoreApplication::sendPostedEvents();  // the layouts follow by them
    }

    QWidget* page = new QWidget;
    QLabel* text = new QLabel(QStringLiteral("words of a text that is wrapped ").repeated(6));
    QLabel* line = new QLabel(QStringLiteral("one line"));
    QWidget* rest = new QWidget;
    PageArea area{*page};
};

TEST_F(PageAreaTest, ThePageFillsAnAreaThatHasRoomForIt)
{
    Show({600, 500});
    EXPECT_EQ(page->size(), area.size());
    EXPECT_FALSE(area.verticalScrollBar()->isVisible());
}

TEST_F(PageAreaTest, NoTextOfThePageIsCutInALowArea)
{
    Show({240, 60});
    EXPECT_TRUE(area.verticalScrollBar()->isVisible());
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
    EXPECT_GE(line->height(), line->sizeHint().height());
    EXPECT_GE(rest->height(), 40);
}

TEST_F(PageAreaTest, AFewLinesOfHeightAreEnough)
{
    rest->setMinimumHeight(5000);
    EXPECT_LT(area.minimumSizeHint().height(), 300);
}

TEST_F(PageAreaTest, ItIsAsWideAsThePageNeeds)
{
    rest->setMinimumWidth(700);
    Show({100, 300});
    EXPECT_GT(area.minimumSizeHint().width(), 700);
}

TEST_F(PageAreaTest, TabPassesItBy)
{
    EXPECT_EQ(area.focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace fenrik
