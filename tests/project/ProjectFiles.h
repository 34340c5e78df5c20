#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

/// A file of the project: its path from the root, and what stands in it.
struct ProjectFile {
    QString path;
    QString text;

    [[nodiscard]] bool IsSource() const { return IsHeader() || path.endsWith(QStringLiteral(".cpp")); }
    [[nodiscard]] bool IsHeader() const { return path.endsWith(QStringLiteral(".h")); }
    [[nodiscard]] bool IsShellScript() const;
};

/// The root of the project, without a separator at its end.
[[nodiscard]] QString ProjectRoot();

/// Every source and every shell script of the project: those that git tracks, or, in a copy that git knows nothing
/// of, all in the tree except `build` and hidden folders.
[[nodiscard]] const QList<ProjectFile>& ProjectFiles();

/// What `program` says about `arguments` if it fails or can't be started; empty if it succeeds.
[[nodiscard]] QString Complaint(const QString& program, const QStringList& arguments);

}  // namespace fenrik
