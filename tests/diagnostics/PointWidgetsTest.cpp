#include "diagnostics/PointTreeModel.h"
#include "diagnostics/ReadableColor.h"
#include "diagnostics/RelationModel.h"
#include "support/Printers.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTreeView>

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
    /// The row's picture as it would be drawn in that state.
    [[nodiscard]] QImage Picture(const QTreeView& view, const QModelIndex& index, QStyle::State state) const
    {
        QStyleOptionViewItem option;
        option.widget = &view;
        option.state = state;
        option.decorationSize = QSize(16, 16);
        initStyleOption(&option, index);
        const bool isSelected = state.testFlag(QStyle::State_Selected);
        return option.icon.pixmap(option.decorationSize, isSelected ? QIcon::Selected : QIcon::Normal).toImage();
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

TEST(ReadableDelegate, PictureOfASelectedRowStandsOnTheListsGround)
{
    PointTreeModel model(QStringLiteral("OUTPUT"));
    model.SetPoints({{QStringLiteral("Wiper"), QStringLiteral("On"), PointTone::On, 0}});
    QTreeView view;
    QPalette colors = view.palette();
    colors.setColor(QPalette::Base, QColor(250, 250, 240));
    view.setPalette(colors);
    const QImage plain = DelegateProbe().Picture(view, model.IndexOf(1), QStyle::State_None);
    const QImage selected = DelegateProbe().Picture(view, model.IndexOf(1), QStyle::State_Selected);
    EXPECT_EQ(plain.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(selected.pixelColor(0, 0), QColor(250, 250, 240));
    const QPoint middle = selected.rect().center();
    EXPECT_EQ(selected.pixelColor(middle), plain.pixelColor(middle)) << "and has its own colours";
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
