#include "platform/JetLexer.h"

#include "platform/Error.h"

namespace fenrik {

namespace {

using Kind = JetToken::Kind;

[[noreturn]] void ThrowUnreadable(const QString& text)
{
    throw Error(ErrorNumber::kDatabaseStatement, QStringLiteral("the expression \"%1\" can't be read").arg(text));
}

bool IsWordPart(QChar character)
{
    return character.isLetterOrNumber() || character == '_' || character == '$';
}

class Lexer {
public:
    explicit Lexer(const QString& text) : mText(text) {}

    std::vector<JetToken> Read()
    {
        std::vector<JetToken> tokens;
        while (SkipBlanks())
            tokens.push_back(ReadToken());
        tokens.push_back({Kind::End, QString()});
        return tokens;
    }

private:
    bool SkipBlanks()
    {
        while (mPosition < mText.size() && mText[mPosition].isSpace())
            ++mPosition;
        return mPosition < mText.size();
    }

    JetToken ReadToken()
    {
        const QChar first = mText[mPosition];
        if (first == '[')
            return {Kind::Bracketed, ReadMarked(']')};
        if (first == '"' || first == '\'')
            return {Kind::Text, ReadMarked(first)};
        if (first == '#')
            return {Kind::Date, ReadMarked('#')};
        if (first.isDigit() || (first == '.' && Following().isDigit()))
            return {Kind::Number, ReadNumber()};
        if (IsWordPart(first))
            return {Kind::Word, ReadWhile(IsWordPart)};
        return {Kind::Symbol, ReadSymbol()};
    }

    [[nodiscard]] QChar Following() const { return mPosition + 1 < mText.size() ? mText[mPosition + 1] : QChar(); }

    // Inside quotes a doubled mark is one of the text's own.
    QString ReadMarked(QChar closing)
    {
        const bool canDouble = closing == QChar('"') || closing == QChar('\'');
        QString inner;
        for (++mPosition; mPosition < mText.size(); ++mPosition) {
            if (mText[mPosition] == closing) {
                if (!canDouble || Following() != closing) {
                    ++mPosition;
                    return inner;
                }
                ++mPosition;
            }
            inner += mText[mPosition];
        }
        ThrowUnreadable(mText);
    }

    template <typename Test>
    QString ReadWhile(Test test)
    {
        const qsizetype start = mPosition;
        while (mPosition < mText.size() && test(mText[mPosition]))
            ++mPosition;
        return mText.mid(start, mPosition - start);
    }

    QString ReadNumber()
    {
        const QString number = ReadWhile([](QChar character) { return character.isDigit() || character == '.'; });
        bool isNumber = false;
        (void)number.toDouble(&isNumber);
        const bool isWhole = mPosition >= mText.size() || !IsWordPart(mText[mPosition]);
        if (!isNumber || !isWhole)
            ThrowUnreadable(mText);
        return number;
    }

    QString ReadSymbol()
    {
        const QString two = mText.mid(mPosition, 2);
        if (two == "<>" || two == "<=" || two == ">=") {
            mPosition += 2;
            return two;
        }
        if (!QStringLiteral("=<>+-*/\\^&(),.!;").contains(mText[mPosition]))
            ThrowUnreadable(mText);
        return mText[mPosition++];
    }

    const QString& mText;
    qsizetype mPosition = 0;
};

}  // namespace

std::vector<JetToken> ReadJetTokens(const QString& text)
{
    return Lexer(text).Read();
}

}  // namespace fenrik
