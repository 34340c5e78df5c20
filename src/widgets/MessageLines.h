#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include <span>

namespace fenrik {

/// The lines of a message list for a MessageListView. A line that is added stays unannounced until Flush, which tells
/// the views of all new lines at once: rowCount is what was announced. Lines never move.
///
/// The owner flushes at the end of a batch, or, told by FlushDue, when the event loop turns.
class MessageLines : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Column {
        const char* title;
        int characters;       ///< width at first
        bool hidden = false;  ///< not shown
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// From the left; the first one has the line's icon.
    [[nodiscard]] virtual std::span<const Column> ListColumns() const = 0;

    [[nodiscard]] virtual bool HasUnseen() const = 0;
    virtual void Flush() = 0;

    /// The row of the line that was added or changed last, also before it is announced; -1 if there are no lines.
    [[nodiscard]] virtual int NewestRow() const = 0;

    /// A view shows the newest line also while the user has selected another one.
    [[nodiscard]] virtual bool AlwaysFollowed() const { return false; }

    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The first line since the last flush was added. The list may not be changed from a slot of this.
    void FlushDue();

protected:
    /// The picture :/icons/<key>.png; null if there is none.
    [[nodiscard]] QIcon Icon(const QString& key) const;

private:
    mutable QHash<QString, QIcon> mIcons;
};

}  // namespace fenrik
