#include "model/RelationshipText.h"

#include "platform/CodePage1252.h"

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
    QByteArray bytes = BytesIn1252(text);
    for (auto position = bytes.size() - 2; position >= 0; --position) {
        if (bytes[position] != kEscape)
            continue;
        const char escaped = bytes[position + 1];
        bytes.replace(position, 2, QByteArray(1, escaped == kEscapedNull ? '\0' : escaped));
    }
    return bytes + kEscape;
}

}  // namespace fenrik
