#include "platform/CodePage1252.h"

#include <algorithm>
#include <array>

namespace fenrik {

namespace {

// The part that differs from the code points of the same number.
constexpr std::uint8_t kFirstOwn = 0x80;
constexpr std::array<char16_t, 32> kOwn{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool IsOwn(int code)
{
    return code >= kFirstOwn && code < kFirstOwn + int(kOwn.size());
}

}  // namespace

QChar CharacterFrom1252(char byte)
{
    const auto code = std::uint8_t(byte);
    return IsOwn(code) ? QChar(kOwn[code - kFirstOwn]) : QChar(code);
}

char ByteIn1252(QChar character)
{
    const int code = character.unicode();
    if (const auto* own = std::find(kOwn.begin(), kOwn.end(), code); own != kOwn.end())
        return char(kFirstOwn + (own - kOwn.begin()));
    return code <= 0xFF && !IsOwn(code) ? char(code) : '?';
}

QString TextFrom1252(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += CharacterFrom1252(byte);
    return text;
}

QByteArray BytesIn1252(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text)
        bytes += ByteIn1252(character);
    return bytes;
}

}  // namespace fenrik
