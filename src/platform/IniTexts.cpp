#include "platform/IniTexts.h"

#include <QFile>

#include <algorithm>

namespace fenrik {

namespace {

/// The number whose digits begin at `place`, which is left behind the last of them. Numbers wrap at 16 bits as they do
/// for QSettings.
char16_t EscapedCharacter(const QByteArray& bytes, qsizetype& place, int base)
{
    char16_t character = 0;
    for (bool isDigit = true; isDigit && place < bytes.size();) {
        const int digit = QByteArray(1, bytes[place]).toInt(&isDigit, base);
        if (isDigit) {
            character = char16_t(character * base + digit);
            ++place;
        }
    }
    return character;
}

/// What an escape stands for, which begins behind the backslash at `place`; a null for those that stand for no
/// character that matters here.
char Escaped(const QByteArray& bytes, qsizetype& place)
{
    const char kind = place < bytes.size() ? bytes[place] : '\0';
    if (kind < '0' || kind > '7')
        ++place;
    char16_t character = 0;
    if (kind == 'x' || (kind >= '0' && kind <= '7'))
        character = EscapedCharacter(bytes, place, kind == 'x' ? 16 : 8);
    return character < 0x80 ? char(character) : '\0';
}

/// The characters of all values in their order, without what QSettings drops between them: quotes, blanks around
/// quotes, and escapes of nothing.
QByteArray Flat(const QByteArray& bytes)
{
    QByteArray flat;
    flat.reserve(bytes.size());
    for (qsizetype place = 0; place < bytes.size();) {
        char byte = bytes[place++];
        if (byte == '\\')
            byte = Escaped(bytes, place);
        if (byte != '\0' && byte != '"' && byte != ' ' && byte != '\t')
            flat.append(byte);
    }
    return flat;
}

}  // namespace

bool IniTexts::HoldObjects(const QByteArray& bytes)
{
    // At the beginning of a value or of a part of a list; anywhere else it is a text that looks so.
    static constexpr const char* kObjects[] = {"=@Variant(", ",@Variant(", "=@DateTime(", ",@DateTime("};
    const QByteArray flat = Flat(bytes);
    return std::ranges::any_of(kObjects, [&flat](const char* object) { return flat.contains(object); });
}

bool IniTexts::SetObjectsAside(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !HoldObjects(file.readAll()))
        return false;
    file.close();
    const QString aside = path + QStringLiteral(".broken");
    QFile::remove(aside);
    return QFile::rename(path, aside);
}

}  // namespace fenrik
