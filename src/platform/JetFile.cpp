#include "platform/JetFile.h"

#include "platform/Error.h"
#include "platform/JetPages.h"

#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>

namespace fenrik {

namespace {

constexpr quint32 kCataloguePage = 2;
constexpr quint32 kSystemFlags = 0x80000002;

// The first page, once the library has taken its mask off:
//
//   offset  width    value
//   3E      4        key of the other pages, 0 if they are plain
//   42      20 / 40  password (Jet 3 / later; the later one masked with the whole days of the date below)
//   72      8        date of creation, as a double
constexpr int kPasswordOffset = 0x42;
constexpr int kDateOffset = 0x72;

bool HasPassword(const unsigned char* header, bool isJet3)
{
    const int length = isJet3 ? 20 : 40;
    std::array<uchar, 4> mask{};
    const auto days = qFromLittleEndian<double>(header + kDateOffset);
    if (!isJet3 && std::abs(days) < 1e6)
        qToLittleEndian(qint32(days), mask.data());
    for (int i = 0; i < length; ++i) {
        if (header[kPasswordOffset + i] != mask[std::size_t(i) % mask.size()])
            return true;
    }
    return false;
}

}  // namespace

bool JetFile::IsJetHeader(const QByteArray& header)
{
    const QByteArray name = header.mid(4, 15);
    return header.startsWith(QByteArrayLiteral("\0\1\0\0")) && (name == "Standard Jet DB" || name == "Standard ACE DB");
}

JetFile::JetFile(QByteArray bytes, const QString& name) : mBytes(std::move(bytes)), mName(name)
{
    Guarded([&] {
        mPages = std::make_unique<JetPages>(mBytes);
        CheckProtection();
        ReadCatalogue();
    });
}

JetFile::~JetFile() = default;

void JetFile::CheckProtection() const
{
    const MdbHandle* handle = mPages->Handle();
    if (HasPassword(handle->pg_buf, mPages->IsJet3()))
        ThrowJetDamaged(QStringLiteral("it is protected by a password"));
    mPages->Read(kCataloguePage);
    if (handle->pg_buf[0] != MDB_PAGE_TABLE && handle->f->db_key != 0)
        ThrowJetDamaged(QStringLiteral("it is encrypted"));
}

void JetFile::Guarded(const std::function<void()>& reading) const
{
    try {
        reading();
    } catch (const Error& error) {
        throw Error(error.Number(),
                    QStringLiteral("The Jet database %1 can't be read: %2.").arg(mName, error.Description()));
    }
}

QString JetFile::Kind() const
{
    static constexpr std::array<const char*, 7> kKinds{"Jet 3",  "Jet 4",  "ACE 12", "ACE 14",
                                                       "ACE 15", "ACE 16", "ACE 17"};
    const std::size_t version = mPages->Handle()->f->jet_version;
    return QString::fromLatin1(version < kKinds.size() ? kKinds[version] : "ACE");
}

void JetFile::ReadCatalogue()
{
    JetTable catalogue(*mPages, kCataloguePage);
    std::vector<int> places;
    for (const char* name : {"Id", "Type", "Flags", "Name", "LvProp"})
        places.push_back(catalogue.PositionOf(QString::fromLatin1(name)));
    // The others hold the insides of forms and reports, which nobody here needs.
    catalogue.ReadOnly(places);

    QSet<quint32> seen{kCataloguePage};
    Row row;
    while (catalogue.Next(row)) {
        const auto value = [&](std::size_t place) { return row[std::size_t(places[place])]; };
        JetObject object{qint32(value(0).toLongLong()), value(1).toInt(),
                         (quint32(value(2).toLongLong()) & kSystemFlags) != 0, value(3).toString(),
                         value(4).toByteArray()};
        // Two names for one table would make a small file endlessly large.
        if (object.type == JetObject::kTable && !object.isSystem) {
            if (seen.contains(object.DefinitionPage()))
                ThrowJetDamaged(QStringLiteral("two tables share their definition"));
            seen.insert(object.DefinitionPage());
        }
        mObjects.push_back(std::move(object));
    }
    if (mObjects.empty())
        ThrowJetDamaged(QStringLiteral("its catalogue is empty"));
}

const JetObject* JetFile::Find(int type, const QString& name) const
{
    const auto found = std::find_if(mObjects.begin(), mObjects.end(), [&](const JetObject& object) {
        return object.type == type && object.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == mObjects.end() ? nullptr : &*found;
}

void JetFile::ReadTable(const JetObject& object, const std::function<void(const JetTable&)>& columns,
                        const std::function<void(const Row&)>& row) const
{
    Guarded([&] {
        JetTable table(*mPages, object.DefinitionPage());
        columns(table);
        Row values;
        while (table.Next(values))
            row(values);
    });
}

}  // namespace fenrik
