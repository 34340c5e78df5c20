#include "platform/JetJoins.h"

#include "platform/Database.h"
#include "platform/Error.h"

namespace fenrik {

namespace {

[[noreturn]] void ThrowUnmet(const QString& reason)
{
    throw Error(ErrorNumber::kDatabaseStatement, reason);
}

}  // namespace

void JetJoins::AddSource(const QString& table, const QString& alias)
{
    constexpr std::size_t kMost = 60;  // the engine's own limit is 64
    if (mGroups.size() == kMost)
        ThrowUnmet(QStringLiteral("it has too many sources"));
    const QString as = alias.isEmpty() ? QString() : QStringLiteral(" AS %1").arg(QuotedName(alias));
    mGroups.push_back({{(alias.isEmpty() ? table : alias).toLower()}, QuotedName(table) + as, QString()});
}

std::size_t JetJoins::GroupOf(const QString& source) const
{
    for (std::size_t i = 0; i < mGroups.size(); ++i) {
        if (mGroups[i].sources.contains(source.toLower()))
            return i;
    }
    ThrowUnmet(QStringLiteral("it joins \"%1\", which is none of its sources").arg(source));
}

void JetJoins::Join(const QString& left, const QString& right, int kind, const QString& condition)
{
    const std::size_t leftAt = GroupOf(left);
    const std::size_t rightAt = GroupOf(right);
    const QString pair = QStringLiteral("%1\n%2\n%3").arg(left.toLower(), right.toLower()).arg(kind);
    if (leftAt == rightAt) {
        if (mGroups[leftAt].lastPair != pair)
            ThrowUnmet(QStringLiteral("its joins form a ring"));
        mGroups[leftAt].sql += QStringLiteral(" AND %1").arg(condition);
        return;
    }
    if (kind < kInner || kind > kRight)
        ThrowUnmet(QStringLiteral("it has an unknown kind of join"));

    // A right join is a left join seen from the other side, which older engines know as well.
    const bool turned = kind == kRight;
    const Group first = mGroups[turned ? rightAt : leftAt];
    const Group second = mGroups[turned ? leftAt : rightAt];
    const QString word = kind == kInner ? QStringLiteral("INNER JOIN") : QStringLiteral("LEFT JOIN");
    Group joined{first.sources + second.sources,
                 QStringLiteral("%1 %2 %3 ON %4").arg(first.Bracketed(), word, second.Bracketed(), condition), pair};
    mGroups[qMin(leftAt, rightAt)] = joined;
    mGroups.erase(mGroups.begin() + std::ptrdiff_t(qMax(leftAt, rightAt)));
}

QString JetJoins::Sql() const
{
    if (mGroups.empty())
        ThrowUnmet(QStringLiteral("it has no source"));
    QStringList groups;
    for (const Group& group : mGroups)
        groups.append(group.Bracketed());
    return groups.join(QStringLiteral(", "));
}

}  // namespace fenrik
