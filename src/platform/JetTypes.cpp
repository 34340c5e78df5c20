#include "platform/JetTypes.h"

#include "platform/CodePage1252.h"
#include "platform/Error.h"

#include <QDateTime>
#include <QUuid>
#include <QtEndian>

#include <array>
#include <cmath>

namespace fenrik {

namespace {

struct TypeRow {
    int type;
    int size;  // bytes of a value; 0 if they vary
    const char* sqlite;
};

// Texts compare without regard to case, as they do in the engine of the files.
constexpr const char* kTextType = "TEXT COLLATE NOCASE";
constexpr std::array<TypeRow, 16> kTypes{{
    {JetType::kBoolean, 0, "BOOLEAN"},
    {JetType::kByte, 1, "TINYINT"},
    {JetType::kInteger, 2, "SMALLINT"},
    {JetType::kLong, 4, "INTEGER"},
    {JetType::kMoney, 8, ""},
    {JetType::kSingle, 4, "FLOAT"},
    {JetType::kDouble, 8, "DOUBLE"},
    {JetType::kDate, 8, "DATETIME"},
    {JetType::kBinary, 0, "BLOB"},
    {JetType::kText, 0, kTextType},
    {JetType::kOle, 0, "BLOB"},
    {JetType::kMemo, 0, kTextType},
    {JetType::kGuid, 16, kTextType},
    {JetType::kNumeric, 17, ""},
    {JetType::kComplex, 4, "INTEGER"},
    {JetType::kBigInteger, 8, "BIGINT"},
}};

const TypeRow* RowOf(int type)
{
    for (const TypeRow& row : kTypes) {
        if (row.type == type)
            return &row;
    }
    return nullptr;
}

template <typename Number>
Number Read(QByteArrayView bytes, qsizetype position = 0)
{
    return qFromLittleEndian<Number>(bytes.data() + position);
}

QString Expand(QByteArrayView bytes)
{
    QString text;
    bool compressed = true;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == 0)
            compressed = !compressed;
        else if (compressed)
            text += QChar(std::uint8_t(bytes[i]));
        else if (i + 1 < bytes.size())
            text += QChar(Read<quint16>(bytes, i++));
    }
    return text;
}

QString Uncompressed(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size() / 2);
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        text += QChar(Read<quint16>(bytes, i));
    return text;
}

// Days since 1899-12-30. Before that day the fraction still counts forward from midnight.
QVariant Date(double days)
{
    constexpr double kFirst = -657434;  // year 100
    constexpr double kLast = 2958466;   // year 10000
    if (!(days >= kFirst && days < kLast))
        return days;
    const double whole = std::trunc(days);
    const auto seconds = qint64(std::round(std::abs(days - whole) * 86400));
    const QDate day = QDate(1899, 12, 30).addDays(qint64(whole));
    return QDateTime(day, QTime(0, 0), Qt::UTC).addSecs(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString PlacePoint(QString digits, int scale, bool negative)
{
    digits = digits.rightJustified(scale + 1, '0');
    if (scale > 0)
        digits.insert(digits.size() - scale, '.');
    return negative ? '-' + digits : digits;
}

// A double if it gives the same digits back, otherwise the digits.
QVariant Decimal(const QString& digits, int scale, bool negative)
{
    constexpr int kSureDigits = 15;
    const QString text = PlacePoint(digits, scale, negative);
    return digits.size() <= kSureDigits ? QVariant(text.toDouble()) : QVariant(text);
}

QVariant Money(qint64 tenThousandths)
{
    const bool negative = tenThousandths < 0;
    const quint64 size = negative ? ~quint64(tenThousandths) + 1 : quint64(tenThousandths);
    return Decimal(QString::number(size), 4, negative);
}

// A byte whose highest bit is the sign, then 128 bits as four numbers of 32 bits, the highest first.
QVariant Numeric(QByteArrayView bytes, int scale)
{
    std::array<quint32, 4> words{};
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = Read<quint32>(bytes, qsizetype(1 + 4 * i));

    QString digits;
    while (words != std::array<quint32, 4>{}) {
        quint64 rest = 0;
        for (quint32& word : words) {
            rest = rest << 32 | word;
            word = quint32(rest / 10);
            rest %= 10;
        }
        digits.prepend(QChar('0' + int(rest)));
    }
    constexpr int kMostDigits = 38;
    return Decimal(digits, qBound(0, scale, kMostDigits), bytes[0] & 0x80);
}

QVariant Guid(QByteArrayView bytes)
{
    std::array<uchar, 8> last{};
    std::copy_n(bytes.data() + 8, last.size(), last.begin());
    return QUuid(Read<quint32>(bytes), Read<quint16>(bytes, 4), Read<quint16>(bytes, 6), last[0], last[1], last[2],
                 last[3], last[4], last[5], last[6], last[7])
        .toString()
        .toUpper();
}

}  // namespace

QString SqliteTypeOf(int jetType)
{
    const TypeRow* row = RowOf(jetType);
    return QString::fromLatin1(row ? row->sqlite : "BLOB");
}

bool IsLongType(int jetType)
{
    return jetType == JetType::kMemo || jetType == JetType::kOle;
}

QString DecodeJetText(QByteArrayView bytes, JetText encoding)
{
    if (encoding == JetText::Ansi)
        return TextFrom1252(bytes);
    const bool compressed = bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE';
    return compressed ? Expand(bytes.sliced(2)) : Uncompressed(bytes);
}

QVariant DecodeJetValue(int jetType, QByteArrayView bytes, JetText encoding, int scale)
{
    const TypeRow* row = RowOf(jetType);
    if (row && bytes.size() < row->size)
        throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("a field is too short for its type"));
    switch (jetType) {
    case JetType::kByte:
        return qlonglong(std::uint8_t(bytes[0]));
    case JetType::kInteger:
        return qlonglong(Read<qint16>(bytes));
    case JetType::kLong:
    case JetType::kComplex:
        return qlonglong(Read<qint32>(bytes));
    case JetType::kBigInteger:
        return qlonglong(Read<qint64>(bytes));
    case JetType::kMoney:
        return Money(Read<qint64>(bytes));
    case JetType::kSingle:
        return double(Read<float>(bytes));
    case JetType::kDouble:
        return Read<double>(bytes);
    case JetType::kDate:
        return Date(Read<double>(bytes));
    case JetType::kText:
    case JetType::kMemo:
        return DecodeJetText(bytes, encoding);
    case JetType::kGuid:
        return Guid(bytes);
    case JetType::kNumeric:
        return Numeric(bytes, scale);
    default:
        return bytes.toByteArray();
    }
}

}  // namespace fenrik
