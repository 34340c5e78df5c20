#include "simulator/Words.h"

#include <cctype>
#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace fenrik {

namespace {

[[noreturn]] void Refuse(const std::string& reason)
{
    throw std::invalid_argument(reason);
}

std::string Quoted(std::string_view text)
{
    // In this form because GCC 12, optimising, sees an overlap in "\"" + std::string(text) that is not there.
    return std::string("\"").append(text).append("\"");
}

std::string Readable(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

// Unlike the stream operators this reads numbers alike in every locale, and nothing but numbers.
template <typename Number>
bool ReadNumber(std::string_view text, Number& number)
{
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && stop == end;
}

}  // namespace

Words::Words(std::string_view line)
{
    std::size_t at = 0;
    while (at < line.size()) {
        if (std::isspace(static_cast<unsigned char>(line[at]))) {
            ++at;
            continue;
        }
        if (line[at] == '#')
            return;
        const bool quoted = line[at] == '"';
        const auto first = quoted ? at + 1 : at;
        const auto end = line.find_first_of(quoted ? "\"" : " \t\r#", first);
        if (quoted && end == std::string_view::npos)
            Refuse("a quote is not closed");
        mWords.emplace_back(line.substr(first, end == std::string_view::npos ? end : end - first));
        at = end == std::string_view::npos ? line.size() : end + (quoted ? 1 : 0);
    }
}

std::string_view Words::Peek() const
{
    return Empty() ? std::string_view{} : std::string_view(mWords[mNext]);
}

bool Words::TakeIf(std::string_view word)
{
    if (Empty() || Peek() != word)
        return false;
    ++mNext;
    return true;
}

std::string Words::Take(std::string_view what)
{
    if (Empty())
        Refuse(std::string(what) + " is missing");
    return mWords[mNext++];
}

int Words::TakeNumber(std::string_view what, int least, int most)
{
    const auto word = Take(what);
    int number = 0;
    if (!ReadNumber(word, number))
        Refuse(std::string(what) + " is no whole number: " + Quoted(word));
    if (number < least || number > most)
        Refuse(std::string(what) + " " + word + " is not from " + std::to_string(least) + " to " +
               std::to_string(most));
    return number;
}

double Words::TakeDecimal(std::string_view what, double least, double most)
{
    const auto word = Take(what);
    double number = 0;
    if (!ReadNumber(word, number))
        Refuse(std::string(what) + " is no number: " + Quoted(word));
    if (!(number >= least && number <= most))
        Refuse(std::string(what) + " " + word + " is not from " + Readable(least) + " to " + Readable(most));
    return number;
}

bool Words::TakeOnOff()
{
    const auto word = Take("on or off");
    if (word != "on" && word != "off")
        Refuse("on or off is expected in place of " + Quoted(word));
    return word == "on";
}

bool Words::TakeOptionalOnOff()
{
    return Peek() == "on" || Peek() == "off" ? TakeOnOff() : true;
}

void Words::ExpectEnd() const
{
    if (!Empty())
        Refuse("too much: " + Quoted(Peek()));
}

}  // namespace fenrik
