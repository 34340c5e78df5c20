#include "platform/JetProperties.h"

#include "platform/Error.h"

#include <QStringList>

namespace fenrik {

namespace {

constexpr int kChunkHead = 6;
constexpr int kPropertyHead = 8;
constexpr int kNames = 0x80;
constexpr int kOwnProperties = 0;

/// Reads numbers and pieces from the front; beyond the end there are zeros and empty pieces.
class Cursor {
public:
    explicit Cursor(QByteArrayView bytes) : mRest(bytes) {}

    [[nodiscard]] bool AtEnd() const { return mRest.isEmpty(); }
    qsizetype Number(int width)
    {
        const QByteArrayView bytes = Piece(width);
        qsizetype number = 0;
        for (qsizetype i = bytes.size() - 1; i >= 0; --i)
            number = number << 8 | std::uint8_t(bytes[i]);
        return number;
    }
    QByteArrayView Piece(qsizetype size)
    {
        const qsizetype taken = qBound(qsizetype(0), size, mRest.size());
        const QByteArrayView piece = mRest.first(taken);
        mRest = mRest.sliced(taken);
        return piece;
    }

private:
    QByteArrayView mRest;
};

QStringList ReadNames(QByteArrayView chunk, JetText encoding)
{
    QStringList names;
    Cursor cursor(chunk);
    while (!cursor.AtEnd())
        names.append(DecodeJetText(cursor.Piece(cursor.Number(2)), encoding));
    return names;
}

void ReadValues(QByteArrayView chunk, const QStringList& names, JetText encoding, QMap<QString, QVariant>& properties)
{
    Cursor cursor(chunk);
    cursor.Piece(cursor.Number(4) - 4);
    while (!cursor.AtEnd()) {
        Cursor property(cursor.Piece(qMax(cursor.Number(2) - 2, qsizetype(kPropertyHead - 2))));
        property.Number(1);
        const auto type = int(property.Number(1));
        const qsizetype name = property.Number(2);
        const QByteArrayView value = property.Piece(property.Number(2));
        if (name < names.size())
            properties.insert(names[name].toLower(), DecodeJetValue(type, value, encoding, 0));
    }
}

}  // namespace

QMap<QString, QVariant> ReadJetProperties(QByteArrayView block, JetText encoding)
{
    QMap<QString, QVariant> properties;
    QStringList names;
    Cursor cursor(block);
    cursor.Number(4);
    try {
        while (!cursor.AtEnd()) {
            const qsizetype length = cursor.Number(4);
            const qsizetype kind = cursor.Number(2);
            const QByteArrayView chunk = cursor.Piece(length - kChunkHead);
            if (kind == kNames)
                names = ReadNames(chunk, encoding);
            else if (kind == kOwnProperties)
                ReadValues(chunk, names, encoding, properties);
        }
    } catch (const Error&) {
        // A value too short for its type: what was read before it holds.
    }
    return properties;
}

}  // namespace fenrik
