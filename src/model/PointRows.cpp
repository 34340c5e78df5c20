// How an input and an output stand in their node's table; NodeTable tells the format.

#include "model/CDigitalInput.h"
#include "model/COutput.h"
#include "model/NodeImage.h"
#include "model/PropertyRows.h"
#include "model/RelationshipText.h"
#include "platform/Error.h"

#include <limits>

namespace fenrik {

namespace {

const QString kInputName = QStringLiteral("Input Name");
const QString kOnState = QStringLiteral("On State");
const QString kOutputName = QStringLiteral("Output Name");
const QString kInUse = QStringLiteral("In Use");
const QString kRelationships = QStringLiteral("Relationships");
const QString kEnd = QStringLiteral("@END");

template <typename Integer>
Integer NumberOf(const QString& text)
{
    using Limits = std::numeric_limits<Integer>;
    return Integer(PropertyRows::Number(text, Limits::min(), Limits::max()));
}

QByteArray RelationshipOf(const QString& text)
{
    // A node has no more than its memory, of which each byte may be written as two.
    if (text.size() > 2 * NodeImage::kSize)
        throw Error(ErrorNumber::kOverflow, QStringLiteral("A relationship is too long"));
    return RelationshipFromText(text);
}

QString InputMarker(int number)
{
    return QStringLiteral("@Input %1").arg(number);
}

QString OutputMarker(int number)
{
    return QStringLiteral("@Output %1").arg(number);
}

}  // namespace

void CDigitalInput::MakeSystemDatabase(Recordset& rows) const
{
    PropertyRows::Add(rows, InputMarker(mNumber));
    PropertyRows::Add(rows, kInputName, mName);
    PropertyRows::Add(rows, kOnState, QString::number(mOnState));
    PropertyRows::Add(rows, kEnd);
}

void CDigitalInput::LoadSystemDatabase(Recordset& rows)
{
    PropertyRows::ForEachBehind(rows, InputMarker(mNumber), [this](const QString& name, const QString& value) {
        if (name == kInputName)
            setName(value);
        else if (name == kOnState)
            setOnState(NumberOf<std::int16_t>(value));
    });
}

void COutput::MakeSystemDatabase(Recordset& rows) const
{
    PropertyRows::Add(rows, OutputMarker(mNumber));
    PropertyRows::Add(rows, kOutputName, mName);
    PropertyRows::Add(rows, kInUse, QString::number(mUsageCode));
    if (!mRPN.isEmpty())
        PropertyRows::Add(rows, kRelationships, RelationshipToText(mRPN));
    PropertyRows::Add(rows, kEnd);
}

void COutput::LoadSystemDatabase(Recordset& rows)
{
    PropertyRows::ForEachBehind(rows, OutputMarker(mNumber), [this](const QString& name, const QString& value) {
        if (name == kOutputName)
            setName(value);
        else if (name == kInUse)
            setUsageCode(NumberOf<std::int32_t>(value));
        else if (name == kRelationships)
            setRPN(RelationshipOf(value));
    });
}

}  // namespace fenrik
