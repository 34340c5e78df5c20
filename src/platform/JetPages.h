#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

#include <mdbtools.h>

namespace fenrik {

/// Throws kDatabaseBroken. The texts of JetPages and JetTable say what is damaged; JetFile adds the file's name.
[[noreturn]] void ThrowJetDamaged(const QString& what);

/// The pages of a Jet file in memory, read through mdbtools' library: the one owner of the library's handle.
///
/// The bytes come from strangers. What the library gives is checked here before anybody follows it; and as a page can
/// be pointed to any number of times, everything that is read is counted against a budget which no undamaged file
/// reaches, so that a small file can't grow into endless work.
class JetPages {
public:
    /// `bytes` outlives the pages. Throws kDatabaseBroken if the library can't read the header.
    explicit JetPages(const QByteArray& bytes);

    [[nodiscard]] MdbHandle* Handle() const { return mHandle.get(); }
    [[nodiscard]] bool IsJet3() const { return mHandle->f->jet_version == MDB_VER_JET3; }

    /// Makes `page` the current one (Handle()->pg_buf).
    void Read(quint32 page) const;

    /// Where a row of the current page begins and how many bytes it has, flags taken off. `flags` is left with the
    /// two bits below.
    struct Row {
        int start;
        int size;
        int flags;
    };
    static constexpr int kDeleted = 0x8000;
    static constexpr int kElsewhere = 0x4000;  ///< the row is a pointer to another page's row
    [[nodiscard]] Row FindRow(int row) const;
    [[nodiscard]] int RowCount() const;  ///< of the current page

    /// The bytes of a memo or OLE field, whose 12 or more bytes in the row are `field`:
    ///
    ///   offset  width  value
    ///   0       4      length in its lower 30 bits; 80000000 the value follows here, 40000000 one row holds it,
    ///                  neither: a chain of rows, each of which begins with the 4-byte pointer to the next
    ///   4       4      pointer: row in the lowest byte, page above
    ///   8       4      unknown
    [[nodiscard]] QByteArray LongValue(QByteArrayView field);

    /// Takes `bytes` from the budget; throws kDatabaseBroken when it is used up.
    void Charge(qint64 bytes);

private:
    struct Closer {
        void operator()(MdbHandle* handle) const { mdb_close(handle); }
    };

    [[nodiscard]] QByteArrayView FarRow(quint32 pointer);

    std::unique_ptr<MdbHandle, Closer> mHandle;
    qint64 mBudget;
};

}  // namespace fenrik
