#include "widgets/MessageLines.h"

#include <QFile>

namespace fenrik {

int MessageLines::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ListColumns().size());
}

QVariant MessageLines::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= int(ListColumns().size()))
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(ListColumns()[std::size_t(section)].title);
    return role == Qt::TextAlignmentRole ? QVariant(int(Qt::AlignLeft | Qt::AlignVCenter)) : QVariant();
}

QIcon MessageLines::Icon(const QString& key) const
{
    const auto known = mIcons.constFind(key);
    if (known != mIcons.constEnd())
        return *known;
    // An icon of a missing file is not null, and a view would leave room for it.
    const QString file = QStringLiteral(":/icons/%1.png").arg(key);
    return *mIcons.insert(key, QFile::exists(file) ? QIcon(file) : QIcon());
}

}  // namespace fenrik
