#pragma once

#include <QAbstractItemModel>
#include <QColor>
#include <QList>
#include <QString>

namespace fenrik {

/// How a point of the tree is drawn, in the colours of a light screen.
enum class PointTone { InUse, NotInUse, On, Fault };
[[nodiscard]] QColor PointColor(PointTone tone);

/// One input or output as it stands in the tree.
struct PointRow {
    QString text;
    QString icon;  ///< key of the picture
    PointTone tone = PointTone::InUse;
    int levels = 0;  ///< rows under it

    friend bool operator==(const PointRow&, const PointRow&) = default;
};

/// The tree of a node's inputs or outputs: a row for each, in the order of their numbers, and under it a row for each
/// level of its relationship. Holds texts only, so that it stays whole when the node's points are made anew.
class PointTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Roles {
        TagRole = Qt::UserRole,
        IconKeyRole,
        KeyRole,  ///< "O0302" for level 2 of point 3
    };

    static constexpr const char* kLevelTag = "RLEVEL";

    /// `tag` is that of the points.
    explicit PointTreeModel(const QString& tag, QObject* parent = nullptr);

    /// Everything anew; the first point has number 1.
    void SetPoints(const QList<PointRow>& points);

    /// A number that is not there is ignored. The levels stay.
    void UpdatePoint(int number, const QString& text, const QString& icon, PointTone tone);

    /// Invalid if there is no such row. Level 0 is the point itself.
    [[nodiscard]] QModelIndex IndexOf(int number, int level = 0) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] QVariant PointData(int number, int role) const;
    [[nodiscard]] static QVariant LevelData(int number, int level, int role);

    QString mTag;
    QList<PointRow> mPoints;
};

}  // namespace fenrik
