#include "logging/LogLayout.h"

#include "link/CMessage.h"
#include "logging/CMessage98.h"
#include "platform/VersionInfo.h"

#include <array>

namespace fenrik {

namespace {

constexpr int kFields00 = 8;
constexpr int kFields98 = 5;
constexpr std::array<int, kFields00> kColumns00{1, 28, 35, 42, 52, 62, 80, 93};
constexpr std::array<int, kFields98> kColumns98{1, 11, 46, 56, 76};
constexpr int kNumberWidth = 5;
constexpr int kDigitsOfSingle = 7;

template <std::size_t Count>
int WidthOf(const std::array<int, Count>& columns, std::size_t field)
{
    return columns[field + 1] - columns[field];
}

template <std::size_t Count>
QString InColumns(const std::array<int, Count>& columns, const std::array<QString, Count>& fields)
{
    QString line;
    line.reserve(columns.back() + fields.back().size());
    for (std::size_t i = 0; i < Count; ++i) {
        line.resize(qMax(line.size(), qsizetype(columns[i] - 1)), QLatin1Char(' '));
        line += fields[i];
    }
    return line;
}

QString Rule(int hyphens)
{
    return QString(hyphens, QLatin1Char('-'));
}

/// The shortest text of a number, without the zero before a point.
QString Number(float value)
{
    QString text = QString::number(double(value), 'g', kDigitsOfSingle);
    return text.startsWith(QLatin1String("0.")) ? text.mid(1) : text;
}

QString Printed(const QString& number)
{
    return (number.startsWith(QLatin1Char('-')) ? QString() : QStringLiteral(" ")) + number + QLatin1Char(' ');
}

/// The time format prints whole seconds; its ".00" is no format character and stands there as it is.
QString WholeSeconds(const CMessage& message)
{
    const QString stamp = message.TimeStamp();
    return stamp.isEmpty() ? stamp : stamp.section(QLatin1Char('.'), 0, 0) + QStringLiteral(".00");
}

/// The locale's short time, with seconds behind the minutes in the manner of what stands before them.
QString TimeFormat(const QLocale& locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    const auto minutes = format.indexOf(QLatin1String("mm"));
    if (minutes > 0 && !format.contains(QLatin1Char('s')))
        format.insert(minutes + 2, format[minutes - 1] + QStringLiteral("ss"));
    return format;
}

QString DateFormat(const QLocale& locale)
{
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

}  // namespace

QStringList LogLayout::Header00(const VersionInfo& version, const QString& connected)
{
    const QString rule = Rule(104);
    const QString titles =
        InColumns<kFields00>(kColumns00, {QStringLiteral("Command"), QStringLiteral("Data"), QStringLiteral("State"),
                                          QStringLiteral("Extended"), QStringLiteral("CheckSum"), QStringLiteral("RAW"),
                                          QStringLiteral("TimeStamp"), QStringLiteral("DateStamp")});
    return {rule,      QStringLiteral("Fenrik Diagnostics Log (v%1)").arg(version.MajorMinorRevision()),
            connected, rule,
            titles,    rule};
}

QString LogLayout::Line00(const QString& name, const CMessage& message)
{
    return InColumns<kFields00>(
        kColumns00, {name.left(WidthOf(kColumns00, 0)), QString::number(message.data).leftJustified(kNumberWidth),
                     Printed(QString::number(message.State)), Printed(QString::number(message.extended)),
                     QString::number(message.CheckSum).leftJustified(kNumberWidth), message.RAW(),
                     WholeSeconds(message), message.DateStamp()});
}

QStringList LogLayout::Header98(std::optional<int> trigger, const QString& connected)
{
    const QString titles =
        InColumns<kFields98>(kColumns98, {QStringLiteral("Node"), QStringLiteral("Name"), QStringLiteral("Data"),
                                          QStringLiteral("Description"), QStringLiteral("TimeStamp")});
    // The last rule has always been two short of the others, and those who know the log know it so.
    return {Rule(85),
            QStringLiteral("FenrikII Diagnostics Log 98"),
            trigger ? QStringLiteral("Trigger =  %1").arg(*trigger) : QString(),
            connected,
            Rule(85),
            titles,
            Rule(83)};
}

QString LogLayout::Line98(const CMessage98& entry)
{
    return InColumns<kFields98>(kColumns98,
                                {Printed(QString::number(entry.Node)), entry.Name.left(WidthOf(kColumns98, 1)),
                                 Printed(QString::number(entry.data)), entry.Desc.left(WidthOf(kColumns98, 3)),
                                 Printed(Number(entry.TimeStamp))});
}

QString LogLayout::GeneralDate(Moment moment, const QLocale& locale)
{
    QString text = locale.toString(moment.DateTime(), DateFormat(locale) + QLatin1Char(' ') + TimeFormat(locale));
    constexpr char16_t kNarrowBlank = 0x202F;  // some locales set it before "AM"; a plain one is easier to search for
    return text.replace(QChar(kNarrowBlank), QLatin1Char(' '));
}

}  // namespace fenrik
