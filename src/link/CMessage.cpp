#include "link/CMessage.h"

#include "shared/TextFormat.h"

#include <QStringList>

namespace fenrik {

namespace {

/// The number format "00" reads its argument as a number if it is one, so a text with a letter comes out unchanged.
QString SentByte(std::uint8_t byte)
{
    const QString hex = Hex(byte);
    bool isDecimal = false;
    const int number = hex.toInt(&isDecimal);
    return isDecimal ? QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')) : hex;
}

}  // namespace

QString CMessage::RawText(RawForm form, const Frame::Bytes& bytes)
{
    if (form == RawForm::None)
        return {};
    QStringList parts;
    for (const std::uint8_t byte : bytes)
        parts.append(form == RawForm::Sent ? SentByte(byte) : Hex(byte));
    return parts.join(QLatin1Char('.'));
}

}  // namespace fenrik
