#include "diagnostics/OutputTexts.h"

#include "model/COutput.h"
#include "shared/TextFormat.h"

namespace fenrik {

namespace {

/// All the decimals that there are, and no more: "2", "1.5".
QString Plain(Fixed4 value)
{
    return QString::number(value.ToDouble(), 'g', 15);
}

QString Seconds(Fixed4 value)
{
    return Plain(value) + QStringLiteral(" Seconds");
}

}  // namespace

QString OutputTexts::LoadShed(Fixed4 volts)
{
    if (volts < Fixed4())
        return QLatin1String(kUnavailable);
    if (volts == Fixed4())
        return QStringLiteral("None");
    // One decimal, half a tenth upwards, and no zero before the point: the format's own way.
    const std::int64_t tenths = (volts.TenThousandths() + Fixed4::kOne / 20) / (Fixed4::kOne / 10);
    const QString whole = tenths < 10 ? QString() : QString::number(tenths / 10);
    return QStringLiteral("%1.%2v").arg(whole).arg(tenths % 10);
}

QString OutputTexts::Flashing(const COutput& output)
{
    return output.IsInUse() ? BooleanText(output.Flashing()) : QLatin1String(kUnavailable);
}

OutputTexts::Timing OutputTexts::TimingOf(const COutput& output, bool nodeHasDelays)
{
    const QString sequence = QStringLiteral("Sequence:");
    if (!output.IsInUse())
        return {sequence, QLatin1String(kUnavailable), {}, {}};
    const Fixed4 second = Fixed4::Whole(1);
    if (!nodeHasDelays || (output.DelayOn() < second && output.DelayOff() < second))
        return {sequence, QString::number(output.Sequence()), {}, {}};
    return {QStringLiteral("On Delay:"), Seconds(output.DelayOn()), QStringLiteral("Off Delay:"),
            Seconds(output.DelayOff())};
}

QString OutputTexts::Level(const COutput& output)
{
    return output.Override() ? QString::number(output.Value()) + QLatin1Char('%') : QLatin1String(kRelease);
}

QString OutputTexts::ForceTip(const QString& level)
{
    if (level == QLatin1String(kRelease))
        return QStringLiteral("Release this Output");
    return QStringLiteral("Force this Output to ") + level;
}

float OutputTexts::LevelOfText(const QString& text)
{
    if (const double level = Val(text); level != 0)
        return float(level);
    return text.startsWith(QLatin1Char('0')) ? 0.0F : -1.0F;
}

}  // namespace fenrik
