#include "model/Relationship.h"

namespace fenrik::Relationship {

namespace {

struct Operator {
    std::uint8_t byte;
    const char* text;
};

constexpr Operator kOperators[] = {{kNot, "NOT"}, {kAnd, "AND"}, {kOr, "OR"}, {kXor, "XOR"}, {kOn, "ON"}};

}  // namespace

QString OperatorText(std::uint8_t byte)
{
    for (const Operator& known : kOperators) {
        if (known.byte == byte)
            return QLatin1String(known.text);
    }
    return QStringLiteral("(ERR)");
}

int LevelCount(const QByteArray& relationship)
{
    return int(relationship.count(char(kOpenLevel)));
}

bool IsPermanentlyOn(const QByteArray& relationship)
{
    return relationship.startsWith("\xFF\xFF\xF0") || relationship == "\xFF\xF0";
}

}  // namespace fenrik::Relationship
