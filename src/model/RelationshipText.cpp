#include "model/RelationshipText.h"

#include "platform/CodePage1252.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr char kEscape = '\xFF';
constexpr char kEscapedNull = '\x01';

}  // namespace

QString RelationshipToText(const QByteArray& relationship)
{
    QString text;
    for (const char byte : relationship) {
        if (byte == 0 || byte == kEscape)
            text += CharacterFrom1252(kEscape);
        text += CharacterFrom1252(byte == 0 ? kEscapedNull : byte);
    }
    return text;
}

QByteArray RelationshipFromText(const QString& text)
{
    const QByteArray escaped = BytesIn1252(text);
    QByteArray bytes;  // from the last to the first
    for (auto byte = escaped.crbegin(); byte != escaped.crend(); ++byte) {
        if (*byte != kEscape || bytes.isEmpty())
            bytes.append(*byte);
        else if (bytes.back() == kEscapedNull)
            bytes.back() = '\0';
    }
    std::ranges::reverse(bytes);
    return bytes + kEscape;
}

}  // namespace fenrik
