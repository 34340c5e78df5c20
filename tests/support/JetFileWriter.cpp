#include "support/JetFileWriter.h"

#include "platform/CodePage1252.h"

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <numeric>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr quint32 kCataloguePage = 2;
constexpr quint32 kSystem = 0x80000000;
constexpr char kUserTable = 0x4E;
constexpr char kSystemTable = 0x53;
constexpr int kElsewhereFlag = 0x4000;
constexpr int kDeletedFlag = 0x8000;
constexpr int kLongestInRow = 60;

const std::vector<JetFileWriter::Column> kObjectColumns{
    {"Id", JetType::kLong},         {"ParentId", JetType::kLong},    {"Name", JetType::kText},
    {"Type", JetType::kInteger},    {"DateCreate", JetType::kDate},  {"DateUpdate", JetType::kDate},
    {"Owner", JetType::kBinary},    {"Flags", JetType::kLong},       {"Database", JetType::kMemo},
    {"Connect", JetType::kMemo},    {"ForeignName", JetType::kText}, {"RmtInfoShort", JetType::kBinary},
    {"RmtInfoLong", JetType::kOle}, {"Lv", JetType::kOle},           {"LvProp", JetType::kOle},
    {"LvModule", JetType::kOle},    {"LvExtra", JetType::kOle},
};

const std::vector<JetFileWriter::Column> kQueryColumns{
    {"ObjectId", JetType::kLong}, {"Attribute", JetType::kByte}, {"Order", JetType::kBinary},
    {"Name1", JetType::kText},    {"Name2", JetType::kText},     {"Expression", JetType::kMemo},
    {"Flag", JetType::kInteger},  {"LvExtra", JetType::kOle},
};

template <typename Number>
QByteArray Little(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
void Put(QByteArray& bytes, qsizetype position, Number number)
{
    bytes.replace(position, sizeof(Number), Little(number));
}

int FixedSize(int type)
{
    static const QMap<int, int> kSizes{{JetType::kBoolean, 0},  {JetType::kByte, 1},   {JetType::kInteger, 2},
                                       {JetType::kLong, 4},     {JetType::kMoney, 8},  {JetType::kSingle, 4},
                                       {JetType::kDouble, 8},   {JetType::kDate, 8},   {JetType::kGuid, 16},
                                       {JetType::kNumeric, 17}, {JetType::kComplex, 4}};
    return kSizes.value(type, -1);
}

bool IsFixed(const JetFileWriter::Column& column)
{
    return FixedSize(column.type) >= 0;
}

// The cipher that masks the first page; it is its own reverse.
void Mask(QByteArray& page, int start, int length)
{
    const std::array<std::uint8_t, 4> key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t(0));
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = std::uint8_t(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (int position = start; position < start + length; ++position) {
        j = std::uint8_t(j + state[++i]);
        std::swap(state[i], state[j]);
        page[position] = char(page[position] ^ char(state[std::uint8_t(state[i] + state[j])]));
    }
}

}  // namespace

JetFileWriter::JetFileWriter(Version version) : mVersion(version)
{
    NewPage(0, 0);
    NewPage(1, 0);
    if (NewPage(2, 0) != kCataloguePage)
        throw std::logic_error("the catalogue has its page");
    AddObject("MSysDb", 2, 268435456, qint32(kSystem));
    AddObject("MSysObjects", 1, kCataloguePage, qint32(kSystem));
}

quint32 JetFileWriter::NewPage(char type, quint32 owner)
{
    QByteArray page(PageSize(), '\0');
    page[0] = type;
    page[1] = 1;
    Put(page, 4, owner);
    mPages.push_back(page);
    return quint32(mPages.size() - 1);
}

int JetFileWriter::RowCount(quint32 page) const
{
    return qFromLittleEndian<quint16>(mPages[page].constData() + (IsJet3() ? 8 : 12));
}

bool JetFileWriter::HasRoom(quint32 page, qsizetype size) const
{
    const int head = IsJet3() ? 10 : 14;
    const int count = RowCount(page);
    const int lowest = count == 0
                           ? PageSize()
                           : qFromLittleEndian<quint16>(mPages[page].constData() + head + 2 * (count - 1)) & 0x1FFF;
    return count < 255 && lowest - (head + 2 * (count + 1)) >= size;
}

quint32 JetFileWriter::AddRow(quint32 page, const QByteArray& row, int flags)
{
    if (!HasRoom(page, row.size()))
        throw std::length_error("the row does not fit on its page");
    const int head = IsJet3() ? 10 : 14;
    const int count = RowCount(page);
    QByteArray& bytes = Page(page);
    const int lowest =
        count == 0 ? PageSize() : qFromLittleEndian<quint16>(bytes.constData() + head + 2 * (count - 1)) & 0x1FFF;
    const auto start = int(lowest - row.size());
    bytes.replace(start, row.size(), row);
    Put(bytes, head + 2 * count, quint16(start | flags));
    Put(bytes, head - 2, quint16(count + 1));
    Put(bytes, 2, quint16(start - head - 2 * (count + 1)));
    return page << 8 | quint32(count);
}

void JetFileWriter::AddObject(const QString& name, int type, qint32 id, qint32 flags, const QByteArray& properties)
{
    Row row(kObjectColumns.size());
    row[0] = id;
    row[1] = 251658241;
    row[2] = name;
    row[3] = type;
    row[4] = row[5] = 36000.5;
    row[6] = QByteArray("\x26\x8A", 2);
    row[7] = flags;
    if (!properties.isEmpty())
        row[14] = properties;
    mObjects.push_back(row);
}

void JetFileWriter::SetVersionProperties(const QString& accessVersion, qint32 build)
{
    const auto text = [&](const QString& value) {
        return IsJet3() ? BytesIn1252(value)
                        : QByteArray(reinterpret_cast<const char*>(value.utf16()), 2 * value.size());
    };
    const auto counted = [](const QByteArray& bytes) { return Little(quint16(bytes.size())) + bytes; };
    const auto chunk = [](int kind, const QByteArray& content) {
        return Little(quint32(content.size() + 6)) + Little(quint16(kind)) + content;
    };
    const auto property = [&](int type, int name, const QByteArray& value) {
        return Little(quint16(value.size() + 8)) + '\0' + char(type) + Little(quint16(name)) + counted(value);
    };
    const QByteArray names = counted(text("AccessVersion")) + counted(text("Build"));
    const QByteArray head = Little(quint32(6)) + Little(quint16(0));
    const QByteArray values =
        head + property(JetType::kText, 0, text(accessVersion)) + property(JetType::kLong, 1, Little(build));
    mObjects[0][14] = QByteArray(IsJet3() ? "KKD" : "MR2", 4) + chunk(0x80, names) + chunk(0, values);
}

quint32 JetFileWriter::AddTable(const QString& name, const std::vector<Column>& columns, const std::vector<Row>& rows)
{
    const quint32 definition = NewPage(2, 0);
    AddObject(name, 1, qint32(definition));
    WriteTable(definition, columns, rows, kUserTable);
    return definition;
}

void JetFileWriter::AddQuery(const QString& name, const std::vector<JetQueryPart>& parts)
{
    AddObject(name, 5, ++mNextQuery);
    for (const JetQueryPart& part : parts) {
        const auto orNull = [](const QString& text) { return text.isEmpty() ? QVariant() : QVariant(text); };
        mQueries.push_back({mNextQuery, part.attribute, part.order, orNull(part.name1), orNull(part.name2),
                            orNull(part.expression), part.flag, QVariant()});
    }
}

QByteArray JetFileWriter::Bytes()
{
    const quint32 queries = NewPage(2, 0);
    AddObject("MSysQueries", 1, qint32(queries), qint32(kSystem));
    const bool elsewhere = std::exchange(mElsewhere, false);
    WriteTable(queries, kQueryColumns, mQueries, kSystemTable);
    WriteTable(kCataloguePage, kObjectColumns, mObjects, kSystemTable);
    mElsewhere = elsewhere;
    WriteHeader();
    QByteArray bytes;
    for (const QByteArray& page : mPages)
        bytes += page;
    return bytes;
}

void JetFileWriter::WriteTable(quint32 definition, const std::vector<Column>& columns, const std::vector<Row>& rows,
                               char kind)
{
    const std::vector<quint32> pages = WriteRows(definition, columns, rows);
    const QByteArray used = PackMap(pages);
    const QByteArray free = PackMap({});
    const quint32 maps = NewPage(1, 0);
    AddRow(maps, used);
    AddRow(maps, free);
    WriteDefinition(definition, PackDefinition(columns, rows.size(), kind, maps));
}

std::vector<quint32> JetFileWriter::WriteRows(quint32 definition, const std::vector<Column>& columns,
                                              const std::vector<Row>& rows)
{
    std::vector<quint32> pages;
    for (const Row& row : rows) {
        QByteArray packed = PackRow(columns, row);
        if (mElsewhere) {
            const quint32 far = NewPage(1, definition);
            packed = Little(AddRow(far, packed, kDeletedFlag));
            pages.push_back(far);
        }
        // The row's page is looked for from the back: other pages may have been made meanwhile.
        if (pages.empty() || mElsewhere || !HasRoom(pages.back(), packed.size()))
            pages.push_back(NewPage(1, definition));
        AddRow(pages.back(), packed, mElsewhere ? kElsewhereFlag : 0);
    }
    return pages;
}

QByteArray JetFileWriter::PackRow(const std::vector<Column>& columns, const Row& row)
{
    QByteArray body = IsJet3() ? QByteArray(1, char(columns.size())) : Little(quint16(columns.size()));
    QByteArray nulls(qsizetype((columns.size() + 7) / 8), '\0');
    std::vector<int> offsets;
    for (const bool fixed : {true, false}) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (IsFixed(columns[i]) != fixed)
                continue;
            const bool isBoolean = columns[i].type == JetType::kBoolean;
            const bool isSet = isBoolean ? row[i].toBool() : row[i].isValid();
            if (isSet)
                nulls[qsizetype(i / 8)] = char(nulls[qsizetype(i / 8)] | 1 << (i % 8));
            if (!fixed)
                offsets.push_back(int(body.size()));
            if (row[i].isValid() && !isBoolean)
                body += PackValue(columns[i], row[i]);
            else if (fixed)
                body += QByteArray(FixedSize(columns[i].type), '\0');
        }
    }
    if (!offsets.empty())
        body += PackTail(offsets, int(body.size()), int(columns.size()));
    return body + nulls;
}

// Jet 3 has one byte for each offset, and for each further 256 bytes the number of the first offset beyond them.
QByteArray JetFileWriter::PackTail(const std::vector<int>& offsets, int bodySize, int columns) const
{
    QByteArray tail;
    std::vector<int> all = offsets;
    all.push_back(bodySize);
    for (auto offset = all.rbegin(); offset != all.rend(); ++offset)
        tail += IsJet3() ? QByteArray(1, char(*offset & 0xFF)) : Little(quint16(*offset));
    if (!IsJet3())
        return tail + Little(quint16(offsets.size()));

    QByteArray jumps;
    const int nullBytes = (columns + 7) / 8;
    for (int limit = 256; bodySize + tail.size() + jumps.size() + 1 + nullBytes > limit; limit += 256) {
        const auto first = std::find_if(all.begin(), all.end(), [&](int offset) { return offset >= limit; });
        jumps.prepend(first == all.end() ? '\xFF' : char(first - all.begin()));
    }
    return tail + jumps + char(offsets.size());
}

QByteArray JetFileWriter::PackText(const QString& text) const
{
    if (IsJet3())
        return BytesIn1252(text);
    const bool canCompress =
        text.size() > 2 && std::all_of(text.begin(), text.end(), [](QChar c) { return c.row() == 0 && c.cell() != 0; });
    return canCompress ? "\xFF\xFE" + text.toLatin1()
                       : QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
}

QByteArray JetFileWriter::PackValue(const Column& column, const QVariant& value)
{
    switch (column.type) {
    case JetType::kByte:
        return QByteArray(1, char(value.toInt()));
    case JetType::kInteger:
        return Little(qint16(value.toInt()));
    case JetType::kLong:
    case JetType::kComplex:
        return Little(qint32(value.toInt()));
    case JetType::kMoney:
        return Little(qint64(std::llround(value.toDouble() * 10000)));
    case JetType::kSingle:
        return Little(value.toFloat());
    case JetType::kDouble:
    case JetType::kDate:
        return Little(value.toDouble());
    case JetType::kText:
        return PackText(value.toString());
    case JetType::kMemo:
        return PackLongValue(PackText(value.toString()));
    case JetType::kOle:
        return PackLongValue(value.toByteArray());
    case JetType::kNumeric: {
        const double scaled = value.toDouble() * std::pow(10, column.scale);
        return QByteArray(1, scaled < 0 ? '\x80' : '\0') + QByteArray(12, '\0') +
               Little(quint32(std::llround(std::abs(scaled))));
    }
    default:
        return value.toByteArray();
    }
}

QByteArray JetFileWriter::PackLongValue(const QByteArray& value)
{
    const auto head = [&](quint32 kind, quint32 pointer) {
        return Little(quint32(value.size()) | kind) + Little(pointer) + Little(quint32(0));
    };
    if (value.size() <= kLongestInRow)
        return head(0x80000000, 0) + value;

    const int most = PageSize() - 40;
    const bool inOneRow = value.size() <= most / 2;
    if (inOneRow) {
        if (mLongPage == 0 || !HasRoom(mLongPage, value.size()))
            mLongPage = NewPage(1, 0x4C41564C);
        return head(0x40000000, AddRow(mLongPage, value));
    }
    quint32 next = 0;
    const qsizetype parts = (value.size() + most - 1) / most;
    for (qsizetype part = parts - 1; part >= 0; --part)
        next = AddRow(NewPage(1, 0x4C41564C), Little(next) + value.mid(part * most, most));
    return head(0, next);
}

// Few pages: a bit for each from a first one on. Many: a list of pages that hold the bits.
QByteArray JetFileWriter::PackMap(const std::vector<quint32>& pages)
{
    const int mapSize = IsJet3() ? 128 : 64;
    const quint32 first = pages.empty() ? 0 : pages.front();
    if (pages.empty() || pages.back() - first < quint32(8 * mapSize)) {
        QByteArray map = QByteArray(1, '\0') + Little(first) + QByteArray(mapSize, '\0');
        for (const quint32 page : pages)
            map[qsizetype(5 + (page - first) / 8)] =
                char(map[qsizetype(5 + (page - first) / 8)] | 1 << ((page - first) % 8));
        return map;
    }
    const auto perMap = quint32(8 * (PageSize() - 4));
    QByteArray list(1, '\1');
    for (quint32 start = 0; start <= pages.back(); start += perMap) {
        const quint32 map = NewPage(5, 0);
        for (const quint32 page : pages) {
            if (page >= start && page - start < perMap) {
                const auto place = qsizetype(4 + (page - start) / 8);
                Page(map)[place] = char(Page(map)[place] | 1 << ((page - start) % 8));
            }
        }
        list += Little(map);
    }
    return list + QByteArray(mapSize + 5 - list.size(), '\0');
}

QByteArray JetFileWriter::PackDefinition(const std::vector<Column>& columns, std::size_t rows, char kind,
                                         quint32 maps) const
{
    const auto count = quint16(columns.size());
    const auto variable =
        quint16(std::count_if(columns.begin(), columns.end(), [](const Column& c) { return !IsFixed(c); }));
    QByteArray body(IsJet3() ? 43 : 63, '\0');
    const int counts = IsJet3() ? 20 : 40;
    Put(body, IsJet3() ? 12 : 16, quint32(rows));
    body[counts] = kind;
    Put(body, counts + 1, count);
    Put(body, counts + 3, variable);
    Put(body, counts + 5, count);
    Put(body, counts + 15, maps << 8);
    Put(body, counts + 19, maps << 8 | 1);

    QByteArray names;
    quint16 fixedOffset = 0;
    quint16 variables = 0;
    for (quint16 number = 0; number < count; ++number) {
        const Column& column = columns[number];
        body += PackColumn(column, number, fixedOffset, variables);
        names += PackName(column.name);
        if (IsFixed(column))
            fixedOffset = quint16(fixedOffset + FixedSize(column.type));
        else
            ++variables;
    }
    body += names + "\xFF\xFF";
    Put(body, 8, quint32(body.size()));
    return body;
}

// Fixed columns have an offset in the row, the others a number among their like.
QByteArray JetFileWriter::PackColumn(const Column& column, quint16 number, quint16 fixedOffset, quint16 variables) const
{
    const bool fixed = IsFixed(column);
    const int base = IsJet3() ? 0 : 4;
    QByteArray entry(IsJet3() ? 18 : 25, '\0');
    entry[0] = char(column.type);
    Put(entry, base + 1, number);
    Put(entry, base + 3, variables);
    Put(entry, base + 5, number);
    if (column.type == JetType::kNumeric) {
        entry[IsJet3() ? 9 : 11] = 18;
        entry[IsJet3() ? 10 : 12] = char(column.scale);
    }
    entry[IsJet3() ? 13 : 15] = fixed ? 3 : 2;
    Put(entry, IsJet3() ? 14 : 21, quint16(fixed ? fixedOffset : 0));
    const int size = fixed ? FixedSize(column.type) : IsLongType(column.type) ? 0 : IsJet3() ? 255 : 510;
    Put(entry, IsJet3() ? 16 : 23, quint16(size));
    return entry;
}

QByteArray JetFileWriter::PackName(const QString& name) const
{
    if (IsJet3()) {
        const QByteArray bytes = BytesIn1252(name);
        return char(bytes.size()) + bytes;
    }
    const QByteArray bytes(reinterpret_cast<const char*>(name.utf16()), 2 * name.size());
    return Little(quint16(bytes.size())) + bytes;
}

// What does not fit goes on behind the head of a further page.
void JetFileWriter::WriteDefinition(quint32 page, const QByteArray& body)
{
    Page(page).replace(8, qMin(body.size(), qsizetype(PageSize())) - 8, body.mid(8, PageSize() - 8));
    for (qsizetype position = PageSize(); position < body.size(); position += PageSize() - 8) {
        const quint32 next = NewPage(2, 0);
        Put(Page(page), 4, next);
        const QByteArray part = body.mid(position, PageSize() - 8);
        Page(next).replace(8, part.size(), part);
        page = next;
    }
}

void JetFileWriter::WriteHeader()
{
    constexpr double kCreated = 36000.5;
    QByteArray& page = Page(0);
    page.replace(0, 20, QByteArray("\0\1\0\0Standard Jet DB\0", 20));
    Put(page, 0x14, quint32(IsJet3() ? 0 : 1));
    Put(page, 0x3C, quint16(1252));
    Put(page, 0x72, kCreated);
    QByteArray password = mPassword.leftJustified(IsJet3() ? 20 : 40, '\0', true);
    const QByteArray mask = IsJet3() ? QByteArray(4, '\0') : Little(qint32(kCreated));
    for (qsizetype i = 0; i < password.size(); ++i)
        password[i] = char(password[i] ^ mask[i % 4]);
    page.replace(0x42, password.size(), password);
    Mask(page, 0x18, IsJet3() ? 126 : 128);
}

}  // namespace fenrik
