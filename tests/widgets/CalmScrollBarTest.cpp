#include "widgets/CalmScrollBar.h"

#include <QTest>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CountedScrollBar : public CalmScrollBar {
public:
    CountedScrollBar() : CalmScrollBar(Qt::Vertical)
    {
        setRange(0, 1'000'000);
        setGeometry(300, 300, 16, 200);  // away from the mouse
        show();
        mCalm = QTest::qWaitForWindowExposed(this) && Wait();
        paints = 0;
    }

    /// Until what changed is painted, if it is to be painted at all.
    [[nodiscard]] bool Wait() const
    {
        const auto* painting = findChild<QTimer*>(QStringLiteral("TPainting"));
        const bool rested = QTest::qWaitFor([painting] { return !painting->isActive(); });
        QCoreApplication::processEvents();
        return rested;
    }

    [[nodiscard]] bool IsCalm() const { return mCalm; }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        CalmScrollBar::paintEvent(event);
    }

private:
    bool mCalm = false;
};

TEST(CalmScrollBar, AHandleThatMovedIsPaintedOnceForAllItsSteps)
{
    CountedScrollBar bar;
    ASSERT_TRUE(bar.IsCalm());
    for (int i = 1; i <= 5; ++i)
        bar.setValue(i * 100'000);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar.paints, 0) << "painted before its time";
    EXPECT_TRUE(bar.Wait());
    EXPECT_EQ(bar.paints, 1);
    EXPECT_EQ(bar.value(), 500'000);
}

TEST(CalmScrollBar, AHandleThatIsSeenInTheSamePlaceIsNotPainted)
{
    CountedScrollBar bar;
    ASSERT_TRUE(bar.IsCalm());
    bar.setValue(1);
    bar.setMaximum(1'000'001);
    EXPECT_TRUE(bar.Wait());
    EXPECT_EQ(bar.paints, 0);
    EXPECT_EQ(bar.maximum(), 1'000'001);
}

TEST(CalmScrollBar, AHandleThatTheUserHoldsIsPaintedAtOnce)
{
    CountedScrollBar bar;
    ASSERT_TRUE(bar.IsCalm());
    bar.setSliderDown(true);
    bar.setValue(500'000);
    QCoreApplication::processEvents();
    EXPECT_GE(bar.paints, 1);
}

}  // namespace
}  // namespace fenrik
