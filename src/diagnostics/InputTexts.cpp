#include "diagnostics/InputTexts.h"

#include "shared/CommandTable.h"

#include <span>

namespace fenrik {

namespace {

struct CodeText {
    int code;
    const char* text;
};

constexpr CodeText kSwitchTypes[] = {
    {1, "Momentary N/O"}, {2, "Momentary N/C"}, {3, "Latching N/O"},
    {4, "Latching N/C"},  {5, "Momentary"},     {6, "Latching"},
};

constexpr int kOnStateMask = 0x77;
constexpr CodeText kOnStates[] = {
    {0, "Floating"},   {7, "Floating"},    {112, "Floating"}, {1, "Not +Batt"},        {16, "Not +Batt"},
    {2, "Not Ground"}, {32, "Not Ground"}, {17, "Ground"},    {23, "Ground"},          {113, "Ground"},
    {34, "+Batt"},     {39, "+Batt"},      {114, "+Batt"},    {18, "+Batt or Ground"}, {33, "+Batt or Ground"},
};

constexpr CodeText kThreeWays[] = {{0, "False"}, {1, "True"}};

QString TextOf(int code, std::span<const CodeText> table)
{
    for (const CodeText& row : table) {
        if (row.code == code)
            return QLatin1String(row.text);
    }
    return QStringLiteral("Unavailable");
}

}  // namespace

QString InputTexts::SwitchType(int code)
{
    return TextOf(code, kSwitchTypes);
}

QString InputTexts::OnState(int code)
{
    return TextOf(code & kOnStateMask, kOnStates);
}

QString InputTexts::ThreeWay(int code)
{
    return TextOf(code, kThreeWays);
}

QString InputTexts::CommandName(int command, const CommandTable& commands)
{
    if (command < 1 || command >= CommandTable::kSize)
        return QStringLiteral("Unavailable");
    return commands.FriendlyName(command);
}

}  // namespace fenrik
