#include "diagnostics/RelationshipTerms.h"

#include "model/COutput.h"
#include "model/Relationship.h"
#include "shared/CommandTable.h"

namespace fenrik {

namespace {

const QString kOnText = QStringLiteral("ON");
const QString kNotText = QStringLiteral("NOT");
const QString kErrorText = QStringLiteral("(ERR)");
const QString kPermanentlyOn = QStringLiteral("(Permanently On)");
const QString kUnavailable = QStringLiteral("Unavailable");

constexpr qsizetype kLevelHeader = 3;

/// Walks over the bytes and gathers the terms of one level.
class TermReader {
public:
    TermReader(const QByteArray& bytes, int level) : mBytes(bytes), mLevel(level) {}

    QList<CRelation> Read()
    {
        while (mLevelNow <= mLevel && mPlace < mBytes.size()) {
            const std::uint8_t byte = Next();
            if (byte == Relationship::kOpenLevel)
                ++mLevelNow;
            // Other levels are not taken apart: whatever reads 253 in them counts, as it does in RLevelCount.
            if (mLevelNow == mLevel)
                TakeByte(byte);
        }
        return mTerms;
    }

private:
    void TakeByte(std::uint8_t byte)
    {
        if (byte == Relationship::kCommand)
            TakeCommand();
        else if (byte == Relationship::kOpenLevel)
            mPlace += kLevelHeader;
        else if (byte != Relationship::kEndLevel)
            TakeOperator(byte);
    }

    void TakeCommand()
    {
        if (mBytes.size() - mPlace < 2) {
            mPlace = mBytes.size();
            return;
        }
        const int high = Next();
        const int number = high * 256 | Next();
        const std::uint8_t modifier = mPlace < mBytes.size() ? At(mPlace) : Relationship::kEndLevel;
        const QString op = modifier >= Relationship::kCommand ? kOnText : Relationship::OperatorText(modifier);
        // A modifier that reads "ON" says nothing of its own and is read again as whatever it is.
        if (op != kOnText)
            ++mPlace;
        mTerms.append({std::int16_t(number), op});
    }

    void TakeOperator(std::uint8_t byte)
    {
        while (mFirstGap < mTerms.size() && !IsBetweenOperands(mFirstGap))
            ++mFirstGap;
        mTerms.insert(qMin(mFirstGap, mTerms.size()), {0, Relationship::OperatorText(byte)});
    }

    /// True if two operands meet at `place` with no operator between them.
    [[nodiscard]] bool IsBetweenOperands(qsizetype place) const
    {
        const QString& op = mTerms[place].Op;
        return (op == kOnText || op == kNotText) && mTerms[place - 1].icommand != 0;
    }

    [[nodiscard]] std::uint8_t At(qsizetype place) const { return std::uint8_t(mBytes[place]); }
    std::uint8_t Next() { return At(mPlace++); }

    const QByteArray& mBytes;
    int mLevel;
    int mLevelNow = 0;
    qsizetype mPlace = 0;
    QList<CRelation> mTerms;
    qsizetype mFirstGap = 1;  // no operands meet before it, and what is inserted or added later changes nothing there
};

/// A level that has an operator and nothing to apply it to.
QList<TermRow> RowsOfLoneOperator(const QString& op)
{
    if (op == kErrorText)
        return {{op, QString(), 0}};
    if (op == kNotText)
        return {{QString(), kPermanentlyOn, 0}};
    return {};
}

}  // namespace

QList<CRelation> RelationshipTerms::OfLevel(const QByteArray& relationship, int level)
{
    return TermReader(relationship, level).Read();
}

QList<TermRow> RelationshipTerms::Rows(const QList<CRelation>& terms, const CommandTable& commands)
{
    if (terms.size() == 1 && terms.first().icommand == 0)
        return RowsOfLoneOperator(terms.first().Op);
    QList<TermRow> rows;
    for (const CRelation& term : terms) {
        const QString name = term.icommand == 0 ? QString() : commands.FriendlyName(term.icommand);
        rows.append({term.Op, name, term.icommand});
    }
    return rows;
}

QList<TermRow> RelationshipTerms::RowsOf(const COutput& output, int level, const CommandTable& commands)
{
    if (output.PermOn())
        return {{kPermanentlyOn, QString(), 0}};
    if (output.RPN().isEmpty())
        return {{kUnavailable, QString(), 0}};
    return Rows(OfLevel(output.RPN(), level), commands);
}

}  // namespace fenrik
