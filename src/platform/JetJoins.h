#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace fenrik {

/// The sources of a stored Jet query, joined step by step into the text behind FROM. Each step joins the two groups
/// that its sources belong to; groups that no step joins are crossed.
class JetJoins {
public:
    static constexpr int kInner = 1;
    static constexpr int kLeft = 2;
    static constexpr int kRight = 3;

    /// A table or query with its alias, which may be empty.
    void AddSource(const QString& table, const QString& alias);

    /// Joins the groups of the sources `left` and `right` on a condition that is SQL already. A second condition for
    /// the pair that was joined last is added to the first. Throws Error kDatabaseStatement for an unknown source or
    /// kind, and for sources that are joined already by another way.
    void Join(const QString& left, const QString& right, int kind, const QString& condition);

    /// Throws Error kDatabaseStatement if there is no source.
    [[nodiscard]] QString Sql() const;

private:
    struct Group {
        QStringList sources;  // in lower case
        QString sql;
        QString lastPair;

        [[nodiscard]] QString Bracketed() const { return sources.size() > 1 ? '(' + sql + ')' : sql; }
    };

    [[nodiscard]] std::size_t GroupOf(const QString& source) const;

    std::vector<Group> mGroups;
};

}  // namespace fenrik
