#include "platform/JetExpression.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/JetFunctions.h"
#include "platform/JetLexer.h"

namespace fenrik {

namespace {

/// A part of the expression, translated. A logical one is 1 or 0 in SQLite and -1 or 0 in Jet.
struct Term {
    QString sql;
    bool isLogical = false;
    bool isNumber = false;
    bool isText = false;
    QStringList column;
};

QString ValueOf(const Term& term)
{
    return term.isLogical ? QStringLiteral("(-%1)").arg(term.sql) : term.sql;
}

Term Logical(const QString& sql)
{
    return {'(' + sql + ')', true, false, false, {}};
}

Term Plain(const QString& sql)
{
    return {sql, false, false, false, {}};
}

class Parser {
public:
    explicit Parser(const QString& text) : mText(text), mTokens(ReadJetTokens(text)) {}

    JetExpression Parse()
    {
        const Term term = ParseOr();
        if (Peek().kind != JetToken::Kind::End)
            ThrowUnknown(Peek().text);
        return {term.sql, ValueOf(term), term.column, mTables};
    }

private:
    [[noreturn]] void ThrowUnknown(const QString& what) const
    {
        throw Error(ErrorNumber::kDatabaseStatement,
                    QStringLiteral("\"%1\" in the expression \"%2\" has no counterpart").arg(what, mText));
    }

    [[nodiscard]] const JetToken& Peek(std::size_t ahead = 0) const
    {
        return mTokens[qMin(mPosition + ahead, mTokens.size() - 1)];
    }
    JetToken Take()
    {
        const JetToken token = Peek();
        if (mPosition + 1 < mTokens.size())
            ++mPosition;
        return token;
    }
    bool TakeWord(const char* word) { return Peek().IsWord(word) && (Take(), true); }
    bool TakeSymbol(const char* symbol) { return Peek().IsSymbol(symbol) && (Take(), true); }
    void Expect(const char* symbol)
    {
        if (!TakeSymbol(symbol))
            ThrowUnknown(Peek().text);
    }

    Term ParseOr()
    {
        Term left = ParseAnd();
        while (TakeWord("or"))
            left = Join(left, "OR", ParseAnd());
        return left;
    }

    Term ParseAnd()
    {
        Term left = ParseNot();
        while (TakeWord("and"))
            left = Join(left, "AND", ParseNot());
        return left;
    }

    // On numbers these work bit by bit in Jet; only on truth values do both engines agree.
    Term Join(const Term& left, const char* operation, const Term& right) const
    {
        if (left.isNumber || right.isNumber)
            ThrowUnknown(QString::fromLatin1(operation));
        return Logical(QStringLiteral("%1 %2 %3").arg(left.sql, QString::fromLatin1(operation), right.sql));
    }

    Term ParseNot()
    {
        if (!TakeWord("not"))
            return ParseComparison();
        const Nesting nesting(*this);
        const Term term = ParseNot();
        if (term.isNumber)
            ThrowUnknown(QStringLiteral("Not"));
        return Logical(QStringLiteral("NOT %1").arg(term.sql));
    }

    Term ParseComparison()
    {
        Term left = ParseConcatenation();
        while (true) {
            const JetToken& token = Peek();
            if (token.kind == JetToken::Kind::Symbol &&
                QStringList{"=", "<>", "<", ">", "<=", ">="}.contains(token.text)) {
                const QString operation = Take().text;
                left = Logical(QStringLiteral("%1 %2 %3").arg(ValueOf(left), operation, ValueOf(ParseConcatenation())));
            } else if (token.IsWord("is")) {
                left = ParseIsNull(left);
            } else if (token.IsWord("not") || token.IsWord("like") || token.IsWord("between") || token.IsWord("in")) {
                left = ParsePredicate(left);
            } else {
                return left;
            }
        }
    }

    Term ParseIsNull(const Term& left)
    {
        Take();
        const QString operation = TakeWord("not") ? QStringLiteral("IS NOT NULL") : QStringLiteral("IS NULL");
        if (!TakeWord("null"))
            ThrowUnknown(Peek().text);
        return Logical(QStringLiteral("%1 %2").arg(ValueOf(left), operation));
    }

    Term ParsePredicate(const Term& left)
    {
        const QString negation = TakeWord("not") ? QStringLiteral("NOT ") : QString();
        if (TakeWord("between")) {
            const QString low = ValueOf(ParseConcatenation());
            if (!TakeWord("and"))
                ThrowUnknown(Peek().text);
            const QString high = ValueOf(ParseConcatenation());
            return Logical(QStringLiteral("%1 %2BETWEEN %3 AND %4").arg(ValueOf(left), negation, low, high));
        }
        if (TakeWord("in")) {
            Expect("(");
            return Logical(QStringLiteral("%1 %2IN (%3)").arg(ValueOf(left), negation, ParseList().join(", ")));
        }
        if (!TakeWord("like") || Peek().kind != JetToken::Kind::Text)
            ThrowUnknown(Peek().text);
        const QString pattern = LikePattern(Take().text);
        return Logical(QStringLiteral("%1 %2LIKE %3 ESCAPE '\\'").arg(ValueOf(left), negation, pattern));
    }

    [[nodiscard]] QString LikePattern(const QString& pattern) const
    {
        if (pattern.contains('#') || pattern.contains('['))
            ThrowUnknown(pattern);
        QString translated;
        for (const QChar character : pattern) {
            if (character == '%' || character == '_' || character == '\\')
                translated += '\\';
            translated += character == '*' ? QChar('%') : character == '?' ? QChar('_') : character;
        }
        return QuotedText(translated);
    }

    /// The rest of a list whose opening bracket is taken.
    QStringList ParseList()
    {
        QStringList items;
        if (TakeSymbol(")"))
            return items;
        do {
            items.append(ValueOf(ParseOr()));
        } while (TakeSymbol(","));
        Expect(")");
        return items;
    }

    // Of two texts the operator makes one, where a null counts as an empty one.
    Term ParseConcatenation()
    {
        Term left = ParseSum();
        while (TakeSymbol("&")) {
            const Term right = ParseSum();
            left = Plain(QStringLiteral("(coalesce(%1, '') || coalesce(%2, ''))").arg(ValueOf(left), ValueOf(right)));
        }
        return left;
    }

    Term ParseSum()
    {
        Term left = ParseProduct();
        while (Peek().IsSymbol("+") || Peek().IsSymbol("-")) {
            QString operation = Take().text;
            const Term right = ParseProduct();
            const bool joinsTexts = operation == "+" && (left.isText || right.isText);
            if (joinsTexts)
                operation = QStringLiteral("||");
            left = Plain(QStringLiteral("(%1 %2 %3)").arg(ValueOf(left), operation, ValueOf(right)));
            left.isText = joinsTexts;
        }
        return left;
    }

    // Jet divides whole numbers into fractions.
    Term ParseProduct()
    {
        Term left = ParseSigned();
        while (Peek().IsSymbol("*") || Peek().IsSymbol("/")) {
            const bool divides = Take().text == "/";
            const QString form = divides ? QStringLiteral("(CAST(%1 AS REAL) / %2)") : QStringLiteral("(%1 * %2)");
            left = Plain(form.arg(ValueOf(left), ValueOf(ParseSigned())));
        }
        return left;
    }

    Term ParseSigned()
    {
        while (TakeSymbol("+")) {
            // changes nothing
        }
        if (!TakeSymbol("-"))
            return ParsePrimary();
        const Nesting nesting(*this);
        Term term = ParseSigned();
        return {QStringLiteral("(-%1)").arg(ValueOf(term)), false, term.isNumber, false, {}};
    }

    Term ParsePrimary()
    {
        const Nesting nesting(*this);
        const JetToken token = Take();
        switch (token.kind) {
        case JetToken::Kind::Text:
            return {QuotedText(token.text), false, false, true, {}};
        case JetToken::Kind::Number:
            return {token.text, false, true, false, {}};
        case JetToken::Kind::Date:
            return Plain(QuotedText(JetDate(token.text)));
        case JetToken::Kind::Word:
        case JetToken::Kind::Bracketed:
            return ParseNamed(token);
        default:
            break;
        }
        if (token.IsSymbol("*"))
            return {QStringLiteral("*"), false, false, false, {QStringLiteral("*")}};
        if (!token.IsSymbol("("))
            ThrowUnknown(token.text);
        Term inner = ParseOr();
        Expect(")");
        return inner;
    }

    Term ParseNamed(const JetToken& token)
    {
        if (token.kind == JetToken::Kind::Word) {
            if (token.IsWord("null"))
                return Plain(QStringLiteral("NULL"));
            if (token.IsWord("true") || token.IsWord("yes"))
                return Plain(QStringLiteral("-1"));
            if (token.IsWord("false") || token.IsWord("no"))
                return Plain(QStringLiteral("0"));
            if (TakeSymbol("("))
                return ParseCall(token.text);
        }
        if (!TakeSymbol(".") && !TakeSymbol("!"))
            return ColumnTerm({token.text});
        const JetToken member = Take();
        const bool isAll = member.IsSymbol("*");
        if (!member.IsName() && !isAll)
            ThrowUnknown(member.text);
        if (Peek().IsSymbol(".") || Peek().IsSymbol("!"))  // a control of a form
            ThrowUnknown(token.text);
        mTables.append(token.text);
        return ColumnTerm({token.text, member.text});
    }

    [[nodiscard]] static Term ColumnTerm(const QStringList& path)
    {
        QStringList quoted;
        for (const QString& name : path)
            quoted.append(name == "*" ? name : QuotedName(name));
        return {quoted.join('.'), false, false, false, path};
    }

    Term ParseCall(const QString& name)
    {
        const QStringList arguments = ParseList();
        const JetFunction* function = FindJetFunction(name, int(arguments.size()));
        if (!function)
            ThrowUnknown(name);
        const QString sql = CallJetFunction(*function, arguments);
        return function->isLogical ? Logical(sql) : Plain(sql);
    }

    // Brackets in brackets end before the stack does.
    class Nesting {
    public:
        explicit Nesting(Parser& parser) : mParser(parser)
        {
            constexpr int kDeepest = 60;
            if (++mParser.mDepth > kDeepest)
                mParser.ThrowUnknown(QStringLiteral("("));
        }
        ~Nesting() { --mParser.mDepth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& mParser;
    };

    const QString& mText;
    std::vector<JetToken> mTokens;
    std::size_t mPosition = 0;
    int mDepth = 0;
    QStringList mTables;
};

}  // namespace

JetExpression JetExpression::Parse(const QString& text)
{
    constexpr int kLongest = 10'000;
    if (text.size() > kLongest)
        throw Error(ErrorNumber::kDatabaseStatement, QStringLiteral("an expression is too long"));
    return Parser(text).Parse();
}

}  // namespace fenrik
