#pragma once

#include <QString>

#include <vector>

namespace fenrik {

/// One word of a Jet expression. `text` is without the marks around it: brackets, quotes, number signs.
struct JetToken {
    enum class Kind : std::uint8_t { Word, Bracketed, Text, Number, Date, Symbol, End };

    Kind kind;
    QString text;

    [[nodiscard]] bool IsName() const { return kind == Kind::Word || kind == Kind::Bracketed; }
    [[nodiscard]] bool IsWord(const char* word) const
    {
        return kind == Kind::Word && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    [[nodiscard]] bool IsSymbol(const char* symbol) const
    {
        return kind == Kind::Symbol && text == QLatin1String(symbol);
    }
};

/// Takes `text` apart; the last token is End. Throws Error kDatabaseStatement for a mark that is not closed and for a
/// character that no expression has.
[[nodiscard]] std::vector<JetToken> ReadJetTokens(const QString& text);

}  // namespace fenrik
