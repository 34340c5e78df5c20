#include "legacy/MessageTable98.h"

namespace fenrik {

namespace {

MessageEntry98::Kind KindOf(const QString& description)
{
    if (description.compare(QLatin1String("ANALOG"), Qt::CaseInsensitive) == 0)
        return MessageEntry98::Kind::Analog;
    if (description.compare(QLatin1String("LOADSHED"), Qt::CaseInsensitive) == 0)
        return MessageEntry98::Kind::LoadShed;
    return MessageEntry98::Kind::Plain;
}

}  // namespace

MessageEntry98::MessageEntry98(const QString& name, const QString& description, bool ignore, std::int32_t divisor)
    : Name(name), Description(description), Ignore(ignore), Divisor(divisor), kind(KindOf(description))
{
}

}  // namespace fenrik
