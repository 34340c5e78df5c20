#include "diagnostics/PointTreeModel.h"

#include "diagnostics/PointName.h"

#include <QIcon>

namespace fenrik {

namespace {

const QString kLevelIcon = QStringLiteral("RLevel");

/// What the colour says, for those who don't see it.
QString SpokenTone(PointTone tone)
{
    switch (tone) {
    case PointTone::NotInUse:
        return QStringLiteral(", not in use");
    case PointTone::On:
        return QStringLiteral(", on");
    case PointTone::Fault:
        return QStringLiteral(", fault");
    case PointTone::InUse:
        break;
    }
    return {};
}

QIcon Picture(const QString& key)
{
    return QIcon(QStringLiteral(":/icons/%1.png").arg(key));
}

}  // namespace

QColor PointColor(PointTone tone)
{
    switch (tone) {
    case PointTone::NotInUse:
        return QColor(0xCC, 0xCC, 0xCC);
    case PointTone::On:
        return QColor(0x80, 0x80, 0);
    case PointTone::Fault:
        return QColor(0xFF, 0, 0);
    case PointTone::InUse:
        break;
    }
    return QColor(0, 0, 0);
}

PointTreeModel::PointTreeModel(const QString& tag, QObject* parent) : QAbstractItemModel(parent), mTag(tag) {}

void PointTreeModel::SetPoints(const QList<PointRow>& points)
{
    beginResetModel();
    mPoints = points;
    endResetModel();
}

void PointTreeModel::UpdatePoint(int number, const QString& text, const QString& icon, PointTone tone)
{
    const QModelIndex place = IndexOf(number);
    if (!place.isValid())
        return;
    PointRow& row = mPoints[number - 1];
    row = {text, icon, tone, row.levels};
    Q_EMIT dataChanged(place, place);
}

QModelIndex PointTreeModel::IndexOf(int number, int level) const
{
    const QModelIndex point = index(number - 1, 0);
    return level == 0 ? point : index(level - 1, 0, point);
}

// The internal number of an index is the number of its parent point, 0 for the points themselves.
QModelIndex PointTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, quintptr(parent.isValid() ? parent.row() + 1 : 0));
}

QModelIndex PointTreeModel::parent(const QModelIndex& child) const
{
    if (!child.isValid() || child.internalId() == 0)
        return {};
    return createIndex(int(child.internalId()) - 1, 0, quintptr(0));
}

int PointTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(mPoints.size());
    const bool isPoint = parent.internalId() == 0 && parent.column() == 0;
    return isPoint ? mPoints.at(parent.row()).levels : 0;
}

int PointTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant PointTreeModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (index.internalId() == 0)
        return PointData(index.row() + 1, role);
    return LevelData(int(index.internalId()), index.row() + 1, role);
}

QVariant PointTreeModel::PointData(int number, int role) const
{
    const PointRow& point = mPoints.at(number - 1);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return point.text;
    case Qt::DecorationRole:
        return Picture(point.icon);
    case Qt::ForegroundRole:
        return PointColor(point.tone);
    case Qt::AccessibleTextRole:
        return point.text + SpokenTone(point.tone);
    case TagRole:
        return mTag;
    case IconKeyRole:
        return point.icon;
    case KeyRole:
        return PointName::Key(number);
    default:
        return {};
    }
}

QVariant PointTreeModel::LevelData(int number, int level, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return QStringLiteral("Level %1").arg(level);
    case Qt::DecorationRole:
        return Picture(kLevelIcon);
    case TagRole:
        return QLatin1String(kLevelTag);
    case IconKeyRole:
        return kLevelIcon;
    case KeyRole:
        return PointName::Key(number, level);
    default:
        return {};
    }
}

}  // namespace fenrik
