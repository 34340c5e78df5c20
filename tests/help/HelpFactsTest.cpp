// What the Help files say of the program: captions, keys, windows, settings and pins are those of the program.

#include "Book.h"

#include "app/MainToolbar.h"
#include "model/NodeTypes.h"
#include "platform/SettingsStore.h"
#include "shared/Settings.h"
#include "support/Printers.h"

#include <QAction>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;

QString Root(const char* path)
{
    return QStringLiteral(FENRIK_ROOT "/") + QLatin1String(path);
}

QString TextOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QString Chapter(const char* name)
{
    return TextOf(Root("docs/help/manual/") + QLatin1String(name));
}

/// The cells of each row of the table that begins with this head.
QList<QStringList> TableIn(const QString& text, const QString& head)
{
    QList<QStringList> rows;
    bool inTable = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        inTable = line.startsWith(head) || (inTable && line.startsWith(QLatin1Char('|')));
        if (!inTable || line.startsWith(head) || line.startsWith(QStringLiteral("|---")))
            continue;
        QStringList cells;
        for (const QString& cell : line.mid(1).chopped(1).split(QStringLiteral("|")))
            cells.append(cell.trimmed());
        rows.append(cells);
    }
    return rows;
}

/// A text as it stands on the screen: without the marks of keys, and without what comes behind the words.
QString Caption(QString text)
{
    static const QRegularExpression behind(QStringLiteral("(\\.\\.\\.|:| |\\\\n)+$"));
    text.replace(QStringLiteral("&lt;"), QStringLiteral("<")).replace(QStringLiteral("&gt;"), QStringLiteral(">"));
    text.replace(QStringLiteral("&amp;"), QStringLiteral("&")).replace(QStringLiteral("&quot;"), QStringLiteral("\""));
    text.replace(QStringLiteral("\\\""), QStringLiteral("\""));
    return text.remove(QLatin1Char('&')).remove(behind).trimmed();
}

/// Every text in quotes or in a window's layout of the program.
const QSet<QString>& CaptionsOfTheProgram()
{
    static const QSet<QString> captions = [] {
        static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\\n]|\\\\.)*)\"|<string[^>]*>([^<]*)<"));
        QSet<QString> found;
        QDirIterator files(Root("src"), {"*.cpp", "*.h", "*.ui"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            for (auto match = literal.globalMatch(TextOf(files.next())); match.hasNext();) {
                const QRegularExpressionMatch text = match.next();
                found.insert(Caption(text.captured(1) + text.captured(2)));
            }
        }
        return found;
    }();
    return captions;
}

QStringList BoldTextsIn(const QString& markdown)
{
    static const QRegularExpression bold(QStringLiteral("\\*\\*(.+?)\\*\\*"));
    QStringList texts;
    for (auto match = bold.globalMatch(QString(markdown).replace(QLatin1Char('\n'), QLatin1Char(' ')));
         match.hasNext();)
        texts.append(match.next().captured(1).remove(QLatin1Char('\\')));
    return texts;
}

class HelpBook : public testing::TestWithParam<const char*> {
protected:
    Book book{Root("docs/help/") + QLatin1String(GetParam())};
};

// Bold is what stands on the screen. A few paragraphs begin in bold with words that end in a full stop.
TEST_P(HelpBook, NamesTheProgramsCaptionsAsTheyAre)
{
    QStringList unknown;
    for (const QString& text : BoldTextsIn(book.Markdown())) {
        const bool isSentence = text.endsWith(QLatin1Char('.')) && !text.endsWith(QStringLiteral("..."));
        if (!isSentence && !CaptionsOfTheProgram().contains(Caption(text)))
            unknown.append(text);
    }
    EXPECT_THAT(unknown, IsEmpty());
}

TEST_P(HelpBook, ShowsOnlyPicturesOfTheProgram)
{
    const QString folder = Root("docs/help/pictures");
    for (const QString& picture : book.Pictures()) {
        EXPECT_EQ(QFileInfo(picture).path(), folder);
        EXPECT_LT(QFileInfo(picture).size(), 160'000) << picture.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Help, HelpBook, testing::Values("manual.md", "six-steps.md", "connector.md"),
                         [](const auto& file) { return QFileInfo(file.param).baseName().remove('-').toStdString(); });

TEST(HelpFacts, NoPictureIsLeftOver)
{
    QSet<QString> used;
    for (const char* name : {"manual.md", "six-steps.md"}) {
        const QStringList pictures = Book(Root("docs/help/") + QLatin1String(name)).Pictures();
        used.unite(QSet<QString>(pictures.begin(), pictures.end()));
    }
    QStringList unused;
    QDirIterator files(Root("docs/help/pictures"), QDir::Files);
    while (files.hasNext()) {
        if (const QString path = files.next(); !used.contains(path))
            unused.append(path);
    }
    EXPECT_THAT(unused, IsEmpty());
}

TEST(HelpFacts, EveryWindowHasItsSection)
{
    QStringList windows{"frmDiag", "FrmDiag98"};  // laid out without Designer
    static const QRegularExpression dialog(QStringLiteral("<widget class=\"QDialog\" name=\"(\\w+)\""));
    QDirIterator files(Root("src"), {"*.ui"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (const QRegularExpressionMatch match = dialog.match(TextOf(files.next())); match.hasMatch())
            windows.append(match.captured(1));
    }
    EXPECT_THAT(Book(Root("docs/help/manual.md")).Windows(), UnorderedElementsAreArray(windows));
}

TEST(HelpFacts, EveryToolbarButtonIsToldWithItsKey)
{
    MainToolbar toolbar;
    QStringList buttons;
    for (const QAction* action : toolbar.actions()) {
        static const QRegularExpression key(QStringLiteral("\\(([^)]+)\\)$"));
        if (!action->isSeparator())
            buttons.append(QStringLiteral("**%1** %2").arg(action->text(), key.match(action->toolTip()).captured(1)));
    }
    QStringList told;
    for (const QStringList& row : TableIn(Chapter("main-window.md"), "| Button | Key | What it does |")) {
        if (row[0] == QStringLiteral("**Mount**"))
            break;  // the node bars' table
        told.append(row[0] + QLatin1Char(' ') + row[1]);
    }
    EXPECT_EQ(told, buttons);
}

/// Section, key and first value as the program writes them after a start without settings.
QStringList SettingsAtFirst()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("settings.ini");
    SettingsStore store(path);
    Settings settings;
    LoadSettings(store, settings);
    SaveSettings(store, settings);
    store.Sync();
    QStringList rows;
    const QSettings written(path, QSettings::IniFormat);
    for (const QString& key : written.allKeys())
        rows.append(key + QLatin1Char('=') + written.value(key).toString());
    // The profile's part, which the program writes while the profiles' storage works.
    rows << "Settings/RDEnable=False"
         << "Settings/RDRecentProfileKey=";
    return rows;
}

TEST(HelpFacts, EverySettingIsToldWithItsFirstValue)
{
    QStringList told;
    for (const QStringList& row : TableIn(Chapter("files.md"), "| Section | Key | At first | Meaning |")) {
        const QString value = row[2] == QStringLiteral("empty") ? QString() : row[2];
        told.append(QString(row[0] + QLatin1Char('/') + row[1]).remove(QLatin1Char('`')) + QLatin1Char('=') + value);
    }
    EXPECT_THAT(told, UnorderedElementsAreArray(SettingsAtFirst()));
}

struct ConnectorRow {
    const char* chapter;
    int typeID;
};

class Connectors : public testing::TestWithParam<ConnectorRow> {
protected:
    /// The chapter's pins of "Input" or "Output", in order.
    static QStringList Pins(const QString& kind)
    {
        const QString text = TextOf(Root("docs/help/connector.md"))
                                 .section(QStringLiteral("\n# %1\n").arg(QLatin1String(GetParam().chapter)), 1)
                                 .section(QStringLiteral("\n# "), 0, 0);
        QStringList pins;
        for (const QStringList& row : TableIn(text, QStringLiteral("| %1 | Connector | Pin |").arg(kind))) {
            EXPECT_EQ(row[0], QStringLiteral("%1 %2").arg(kind).arg(pins.size() + 1));
            pins.append(row[2]);
        }
        return pins;
    }
};

TEST_P(Connectors, HaveThePinsThatTheToolShows)
{
    const NodeType& type = NodeTypes::Row(GetParam().typeID);
    const QStringList inputs = Pins("Input");
    const QStringList outputs = Pins("Output");
    ASSERT_THAT(inputs, SizeIs(type.Inputs));
    ASSERT_THAT(outputs, SizeIs(type.Outputs));
    for (int number = 1; number <= type.Inputs; ++number) {
        const QString shown = NodeTypes::InputPin(type.typeID, number);
        EXPECT_EQ(inputs[number - 1], shown.isEmpty() ? QStringLiteral("I%1").arg(number) : shown);
    }
    for (int number = 1; number <= type.Outputs; ++number) {
        const QString shown = NodeTypes::OutputPin(type.typeID, number);
        EXPECT_EQ(outputs[number - 1], shown.isEmpty() ? QStringLiteral("O%1").arg(number) : shown);
    }
}

INSTANTIATE_TEST_SUITE_P(Help, Connectors,
                         testing::Values(ConnectorRow{"Brontes and Brontes04", 0},
                                         ConnectorRow{"Brontes and Brontes04", 9},
                                         ConnectorRow{"Brontes and Brontes04", 255}, ConnectorRow{"Petite 4x12", 2},
                                         ConnectorRow{"Petite 16 Input", 5}, ConnectorRow{"Comfort Module", 6},
                                         ConnectorRow{"Petite 8-16", 10}, ConnectorRow{"Brontes-HC", 16}),
                         [](const auto& row) { return "Type" + std::to_string(row.param.typeID); });

TEST(HelpFacts, EveryTypeOfNodeIsInTheConnectorSpec)
{
    const QString text = TextOf(Root("docs/help/connector.md"));
    for (int type = 0; type <= 255; ++type) {
        if (NodeTypes::Row(type).typeID == type && type != NodeTypes::kUnknown) {
            EXPECT_TRUE(text.contains(QLatin1String(NodeTypes::Row(type).TypeName))) << type;
        }
    }
}

}  // namespace
}  // namespace fenrik
