#include "diagnostics/OutputBar.h"
#include "diagnostics/PointTreeModel.h"
#include "diagnostics/ReadableColor.h"
#include "diagnostics/RelationModel.h"
#include "support/Printers.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QSignalSpy>
#include <QToolButton>
#include <QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(PointTreeModel, KeepsTheRulesOfItemModels)
{
    PointTreeModel model(QStringLiteral("OUTPUT"));
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.SetPoints(QList<PointRow>(32, PointRow{QStringLiteral("x"), QStringLiteral("Off"), PointTone::InUse, 3}));
    model.UpdatePoint(32, QStringLiteral("last"), QStringLiteral("On"), PointTone::On);
    EXPECT_EQ(model.IndexOf(32).data().toString(), QStringLiteral("last"));
    EXPECT_EQ(model.rowCount(model.IndexOf(32)), 3);
    EXPECT_EQ(model.IndexOf(32, 3).parent(), model.IndexOf(32));
    model.SetPoints({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(PointTreeModel, ChangeOfAPointAnnouncesThatRowAlone)
{
    PointTreeModel model(QStringLiteral("OUTPUT"));
    model.SetPoints(QList<PointRow>(4));
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.UpdatePoint(3, QStringLiteral("three"), QStringLiteral("On"), PointTone::On);
    model.UpdatePoint(5, QStringLiteral("not there"), QStringLiteral("On"), PointTone::On);
    model.UpdatePoint(0, QStringLiteral("not there"), QStringLiteral("On"), PointTone::On);
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex(), model.IndexOf(3));
}

TEST(PointTreeModel, ColourIsSpokenToo)
{
    PointTreeModel model(QStringLiteral("OUTPUT"));
    model.SetPoints({{QStringLiteral("Wiper"), QStringLiteral("Fault"), PointTone::Fault, 0}});
    EXPECT_EQ(model.IndexOf(1).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Wiper, fault"));
}

TEST(RelationModel, KeepsTheRulesOfItemModels)
{
    RelationModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.SetRows({{QStringLiteral("NOT"), QStringLiteral("Wiper"), 300}});
    EXPECT_EQ(model.index(0, 1).data(RelationModel::TagRole).toInt(), 300);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Op"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Command"));
}

TEST(OutputBar, FourteenOutputsTakeTwoRows)
{
    EXPECT_EQ(OutputBar::Columns(0), 0);
    EXPECT_EQ(OutputBar::Columns(13), 13);
    EXPECT_EQ(OutputBar::Columns(14), 7);
    EXPECT_EQ(OutputBar::Columns(15), 8);
    EXPECT_EQ(OutputBar::Columns(32), 16);
}

TEST(OutputBar, ButtonsStandInTheirRows)
{
    OutputBar bar;
    bar.SetCount(26);
    bar.show();
    const auto buttons = bar.findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 26);
    EXPECT_EQ(buttons[0]->y(), buttons[12]->y());
    EXPECT_GT(buttons[13]->y(), buttons[0]->y());
    EXPECT_EQ(buttons[13]->x(), buttons[0]->x());
    for (const QToolButton* button : buttons)
        EXPECT_EQ(button->width(), 30);
}

TEST(OutputBar, FewerButtonsLeaveNoneOfTheOldOnesBehind)
{
    OutputBar bar;
    bar.SetCount(32);
    bar.SetCount(12);
    EXPECT_EQ(bar.actions().size(), 12);
    EXPECT_EQ(bar.findChild<QAction*>(QStringLiteral("13")), nullptr);
    bar.SetCount(13);
    EXPECT_EQ(bar.actions().size(), 13);
    EXPECT_EQ(bar.findChild<QAction*>(QStringLiteral("13")), bar.actions().last());
}

TEST(OutputBar, ClickTellsTheNumberAndWhetherItIsPressed)
{
    OutputBar bar;
    bar.SetCount(3);
    QSignalSpy clicks(&bar, &OutputBar::ButtonClicked);
    bar.findChildren<QToolButton*>()[1]->click();
    bar.UpdateButton(3, QStringLiteral("tip"), QStringLiteral("On"), true);  // by program: no click
    bar.findChildren<QToolButton*>()[2]->click();
    ASSERT_EQ(clicks.count(), 2);
    EXPECT_EQ(clicks[0], (QList<QVariant>{2, true}));
    EXPECT_EQ(clicks[1], (QList<QVariant>{3, false}));
}

/// Lets a test see how a row would be drawn.
class DelegateProbe : public ReadableDelegate {
public:
    [[nodiscard]] QColor TextColor(const QTreeView& view, const QModelIndex& index) const
    {
        QStyleOptionViewItem option;
        option.widget = &view;
        option.palette = view.palette();
        initStyleOption(&option, index);
        return option.palette.color(QPalette::Text);
    }
};

TEST(ReadableDelegate, BlackRowOnADarkListIsDrawnInTheListsOwnColour)
{
    PointTreeModel model(QStringLiteral("OUTPUT"));
    model.SetPoints(QList<PointRow>(1));
    QTreeView view;
    QPalette dark(QColor(40, 40, 40));
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    dark.setColor(QPalette::Text, QColor(250, 250, 250));
    view.setPalette(dark);
    EXPECT_EQ(DelegateProbe().TextColor(view, model.IndexOf(1)), QColor(250, 250, 250));
}

TEST(ReadableColor, LightBackgroundKeepsTheColour)
{
    EXPECT_EQ(ReadableColor(Qt::black, QPalette(Qt::white)), QColor(Qt::black));
    EXPECT_EQ(ReadableColor(QColor(0x80, 0x80, 0), QPalette(Qt::white)), QColor(0x80, 0x80, 0));
}

TEST(ReadableColor, DarkBackgroundTurnsTheGreysAndLightensTheRest)
{
    QPalette dark(QColor(40, 40, 40));
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    dark.setColor(QPalette::Active, QPalette::Text, Qt::white);
    dark.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
    EXPECT_EQ(ReadableColor(PointColor(PointTone::InUse), dark), QColor(Qt::white));
    EXPECT_EQ(ReadableColor(PointColor(PointTone::NotInUse), dark), QColor(Qt::gray));
    for (const PointTone tone : {PointTone::On, PointTone::Fault}) {
        const QColor shown = ReadableColor(PointColor(tone), dark);
        EXPECT_GE(shown.lightness(), 170);
        EXPECT_NEAR(shown.hslHue(), PointColor(tone).hslHue(), 2);
    }
}

}  // namespace
}  // namespace fenrik
