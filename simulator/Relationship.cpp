#include "simulator/Relationship.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>

namespace fenrik {

namespace {

constexpr std::uint8_t kNot = 240;
constexpr std::uint8_t kAnd = 241;
constexpr std::uint8_t kOr = 242;
constexpr std::uint8_t kXor = 243;
constexpr std::uint8_t kLevel = 253;
constexpr std::uint8_t kCommand = 254;
constexpr std::uint8_t kEnd = 255;
constexpr std::uint8_t kLevelPercent = 50;
constexpr std::size_t kLevelBytes = 3;

struct OperatorRow {
    std::string_view word;
    std::uint8_t code;
};

constexpr OperatorRow kOperators[] = {{"NOT", kNot}, {"AND", kAnd}, {"OR", kOr}, {"XOR", kXor}};

bool Combine(std::uint8_t code, bool left, bool right)
{
    if (code == kAnd)
        return left && right;
    return code == kOr ? left || right : left != right;
}

/// The values of a level's terms while its operators are applied.
class Stack {
public:
    void Push(bool value) { mValues.push_back(value); }
    void Apply(std::uint8_t code)
    {
        const bool top = Pop();
        Push(code == kNot ? !top : Combine(code, Pop(), top));
    }
    /// The level's result; the next level begins with nothing. A level without terms doesn't hold.
    bool Finish()
    {
        const bool result = !mValues.empty() && mValues.back();
        mValues.clear();
        return result;
    }

private:
    bool Pop()
    {
        if (mValues.empty())
            return false;
        const bool top = mValues.back();
        mValues.pop_back();
        return top;
    }

    std::vector<bool> mValues;
};

/// Calls `take(code, command)` for each term, operator and mark.
template <typename Take>
void Walk(const ByteString& relationship, Take take)
{
    for (std::size_t i = 0; i < relationship.size(); ++i) {
        const auto code = relationship[i];
        int command = 0;
        if (code == kCommand && i + 2 < relationship.size()) {
            command = relationship[i + 1] << 8 | relationship[i + 2];
            i += 2;
        }
        if (code == kLevel)
            i += kLevelBytes;
        take(code, command);
    }
}

}  // namespace

ByteString EncodeRelationship(std::string_view text)
{
    ByteString bytes;
    std::uint8_t level = 0;
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (const auto* row = std::ranges::find(kOperators, word, &OperatorRow::word); row != std::end(kOperators)) {
            bytes.push_back(row->code);
        } else if (word == "|") {
            if (level++ > 0)
                bytes.push_back(kEnd);
            bytes.insert(bytes.end(), {kLevel, level, 0, kLevelPercent});
        } else {
            const int command = std::stoi(word);
            bytes.insert(bytes.end(), {kCommand, std::uint8_t(command >> 8), std::uint8_t(command)});
        }
    }
    if (level > 0)
        bytes.push_back(kEnd);
    bytes.push_back(kEnd);
    return bytes;
}

ByteString PermanentlyOnRelationship()
{
    return {kEnd, kEnd, kNot, kEnd};
}

bool Holds(const ByteString& relationship, const std::function<bool(int)>& isOn)
{
    Stack stack;
    bool holds = false;
    Walk(relationship, [&](std::uint8_t code, int command) {
        if (code == kCommand)
            stack.Push(isOn(command));
        else if (code == kLevel || code == kEnd)
            holds = stack.Finish() || holds;
        else
            stack.Apply(code);
    });
    return holds;
}

int LevelCount(const ByteString& relationship)
{
    int levels = 0;
    Walk(relationship, [&](std::uint8_t code, int) { levels += code == kLevel ? 1 : 0; });
    return levels;
}

}  // namespace fenrik
