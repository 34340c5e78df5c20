#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fenrik {

/// The words of one statement, taken from the front. Words are parted by blanks; a quoted word may hold some; '#'
/// outside of quotes begins a comment. What is amiss is thrown as std::invalid_argument with a readable reason.
class Words {
public:
    explicit Words(std::string_view line);

    [[nodiscard]] bool Empty() const { return mNext == mWords.size(); }

    /// The next word without taking it; empty at the end.
    [[nodiscard]] std::string_view Peek() const;

    /// Takes the next word if it is `word`.
    bool TakeIf(std::string_view word);

    /// `what` names the missing or wrong word in the reason.
    std::string Take(std::string_view what);
    int TakeNumber(std::string_view what, int least, int most);
    double TakeDecimal(std::string_view what, double least, double most);
    bool TakeOnOff();

    /// True unless the next word is "off"; takes "on" or "off" if there is one.
    bool TakeOptionalOnOff();

    /// Throws if a word is left over.
    void ExpectEnd() const;

private:
    std::vector<std::string> mWords;
    std::size_t mNext = 0;
};

}  // namespace fenrik
