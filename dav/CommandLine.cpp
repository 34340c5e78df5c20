#include "dav/CommandLine.h"

#include "platform/VersionInfo.h"

#include <QCommandLineParser>

#include <array>

namespace fenrik {

namespace {

struct ActionRow {
    const char* word;
    CommandLine::Action action;
    int operands;
    const char* usage;
};

constexpr std::array<ActionRow, 4> kActions{{
    {"info", CommandLine::Action::Info, 1, "info FILE"},
    {"tables", CommandLine::Action::Tables, 1, "tables FILE"},
    {"dump", CommandLine::Action::Dump, 2, "dump FILE TABLE"},
    {"convert", CommandLine::Action::Convert, 2, "convert [--force] FILE TARGET"},
}};

constexpr const char* kHelp = R"(NAME
  fenrik-dav - look into Fenrik databases (.dav) and convert genuine ones

SYNOPSIS
  fenrik-dav info FILE
  fenrik-dav tables FILE
  fenrik-dav dump FILE TABLE
  fenrik-dav convert [--force] FILE TARGET
  fenrik-dav --help | --version

DESCRIPTION
  A .dav file is a genuine Jet database (Jet 3, Jet 4 or a later "Standard ACE DB") or an SQLite database.
  Fenrik Diagnostics opens both; it never writes to a genuine one. fenrik-dav shows what Fenrik Diagnostics sees
  of a file, and makes an SQLite file of a genuine one. FILE itself is never changed.

COMMANDS
  info FILE
      Tells the kind of the file and the version of the engine that it was made for, its tables with their numbers
      of rows, the stored queries that could be rebuilt, what was left out and why, and the system's properties
      (table SystemInfo).

  tables FILE
      Names the tables, one on each line, in the order of the file.

  dump FILE TABLE
      Writes the rows of a table or a rebuilt query as comma-separated text, under a line with the names of the
      columns. Texts and dates stand in double quotes, a double quote within them is doubled; numbers have none;
      null is nothing at all and an empty text is "". Booleans are -1 and 0. Dates are "yyyy-mm-dd hh:mm:ss", binary
      values are hexadecimal digits in double quotes. The encoding is UTF-8. More than 500,000 rows are refused.

  convert FILE TARGET
      Writes an SQLite database with all tables and all rebuilt queries of FILE to TARGET. TARGET is either written
      whole or left as it was. What could not be taken over is told on the standard error output.

OPTIONS
  -f, --force    convert: replace TARGET if it exists. A genuine database is not replaced, nor FILE itself.
  -h, --help     Show this text.
  -v, --version  Show the version.

EXIT STATUS
  0  all went well
  1  the command line is wrong
  2  FILE can't be read: it is absent, damaged, no database, protected by a password, or has no such table
  3  TARGET or the output can't be written, or TARGET exists already and --force was not given

EXAMPLES
  fenrik-dav info ncCommand.dav
  fenrik-dav dump ncCommand.dav Commands > commands.csv
  fenrik-dav convert old/ncCommand.dav ncCommand.dav
)";

CommandLine Misused(const QString& what)
{
    CommandLine line;
    line.text = what;
    return line;
}

CommandLine Shown(const QString& text)
{
    CommandLine line;
    line.action = CommandLine::Action::ShowText;
    line.text = text;
    return line;
}

QString VersionText()
{
    return QStringLiteral("fenrik-dav %1\n").arg(VersionInfo::OfThisBuild().MajorMinorRevision());
}

CommandLine FromOperands(QStringList operands)
{
    if (operands.isEmpty())
        return Misused(QStringLiteral("a command is missing"));
    const QString word = operands.takeFirst();
    for (const ActionRow& row : kActions) {
        if (word != QLatin1String(row.word))
            continue;
        if (operands.size() != row.operands)
            return Misused(QStringLiteral("the command is used as: fenrik-dav %1").arg(QLatin1String(row.usage)));
        CommandLine line;
        line.action = row.action;
        line.file = operands[0];
        if (row.operands == 2)
            (row.action == CommandLine::Action::Dump ? line.table : line.target) = operands[1];
        return line;
    }
    return Misused(QStringLiteral("there is no command \"%1\"").arg(word));
}

}  // namespace

CommandLine CommandLine::Parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption force(QStringList{QStringLiteral("f"), QStringLiteral("force")});
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    parser.addOptions({force, help, version});
    if (!parser.parse(arguments))
        return Misused(parser.errorText());
    if (parser.isSet(help))
        return Shown(QString::fromUtf8(kHelp));
    if (parser.isSet(version))
        return Shown(VersionText());

    CommandLine line = FromOperands(parser.positionalArguments());
    line.force = parser.isSet(force);
    if (line.force && line.action != Action::Convert && line.action != Action::Misused)
        return Misused(QStringLiteral("--force goes with convert only"));
    return line;
}

}  // namespace fenrik
