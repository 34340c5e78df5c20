#pragma once

#include "platform/JetTable.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace fenrik {

/// One object of a Jet file's catalogue: a table, a stored query, ...
struct JetObject {
    static constexpr int kTable = 1;
    static constexpr int kDatabase = 2;
    static constexpr int kLinkedOdbc = 4;
    static constexpr int kQuery = 5;
    static constexpr int kLinked = 6;

    qint32 id;
    int type;
    bool isSystem;
    QString name;
    QByteArray properties;

    [[nodiscard]] quint32 DefinitionPage() const { return quint32(id) & 0xFFFFFF; }
};

/// A Jet file in memory: its header, its catalogue and its tables. Reads Jet 3, Jet 4 and the files that begin with
/// "Standard ACE DB". Every operation throws kDatabaseBroken, with a text that says what is wrong in which file, also
/// for a file with a password or one that is encrypted.
class JetFile {
public:
    /// True if a file that begins so claims to be one: 00 01 00 00 and one of two names.
    [[nodiscard]] static bool IsJetHeader(const QByteArray& header);

    /// `name` is only told in errors.
    JetFile(QByteArray bytes, const QString& name);
    ~JetFile();
    JetFile(const JetFile&) = delete;
    JetFile& operator=(const JetFile&) = delete;

    /// The kind of file, as "Jet 3", "Jet 4" or "ACE 12".
    [[nodiscard]] QString Kind() const;

    [[nodiscard]] const std::vector<JetObject>& Objects() const { return mObjects; }

    /// The object of that type and name (in any case), or null.
    [[nodiscard]] const JetObject* Find(int type, const QString& name) const;

    using Row = std::vector<QVariant>;

    /// Reads the table `object`: gives `columns` its columns, then `row` each row.
    void ReadTable(const JetObject& object, const std::function<void(const JetTable&)>& columns,
                   const std::function<void(const Row&)>& row) const;

private:
    void CheckProtection() const;
    void ReadCatalogue();
    void Guarded(const std::function<void()>& reading) const;

    QByteArray mBytes;
    QString mName;
    std::unique_ptr<JetPages> mPages;
    std::vector<JetObject> mObjects;
};

}  // namespace fenrik
