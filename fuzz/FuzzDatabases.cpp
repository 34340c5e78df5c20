// The databases that the tool reads, with anything in them. The first byte chooses which one it is, the rest is what
// was done to it. Whatever that was, a reader ends, says why it can't go on in an error of the database, leaves the
// file alone, and what it has read can be shown and saved.

#include "FuzzLink.h"
#include "HostileDatabase.h"
#include "catalogue/CatalogueHost.h"
#include "catalogue/CommandCatalogue.h"
#include "catalogue/LegacyDatabase.h"
#include "catalogue/Markets.h"
#include "catalogue/SpecialCommands.h"
#include "dav/DavProgram.h"
#include "dav/Dump.h"
#include "diagnostics/Analog.h"
#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "diagnostics/RelationshipTerms.h"
#include "legacy/Protocol98.h"
#include "model/SystemDatabase.h"

#include <QApplication>
#include <QBuffer>
#include <QFileInfo>

#include <algorithm>

namespace fenrik {
namespace {

class Host : public CatalogueHost {
public:
    void EndProgram() override { ended = true; }
    int SelectedNodeNumber() const override { return 3; }

    bool ended = false;
};

class CountingBoxes : public Boxes {
public:
    Button MsgBox(const QString&, QMessageBox::Icon, Buttons, const QString&) override
    {
        ++count;
        return QMessageBox::Yes;
    }

    int count = 0;
};

class NoErrors : public ErrorReporter {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override { std::abort(); }
};

/// Lets only such errors pass as a database and its fields give.
template <typename Reader>
void MayFail(const Reader& reader)
{
    constexpr int kNumbers[] = {
        ErrorNumber::kOverflow,         ErrorNumber::kSubscriptOutOfRange, ErrorNumber::kTypeMismatch,
        ErrorNumber::kPermissionDenied, ErrorNumber::kPathFileAccess,      ErrorNumber::kDatabaseBroken,
        ErrorNumber::kTableNotFound,    ErrorNumber::kItemNotFound,        ErrorNumber::kNoCurrentRecord,
        ErrorNumber::kDatabaseReadOnly, ErrorNumber::kDatabaseStatement,   ErrorNumber::kDuplicateKey};
    try {
        reader();
    } catch (const Error& error) {
        if (std::ranges::find(kNumbers, error.Number()) == std::end(kNumbers) || error.Description().isEmpty())
            std::abort();
    }
}

void LoadCatalogue(const QString& path, const QString& systemName)
{
    CommandTable commands;
    Settings settings;
    settings.SystemName = systemName;
    CountingBoxes boxes;
    Host host;
    CommandCatalogue(commands, settings, boxes, host, ScratchFile::Folder()).LoadCommands(path);
    if (boxes.count > 2 || (host.ended && boxes.count == 0))
        std::abort();
}

void ReadCustomCatalogue(const QString& path)
{
    LoadCatalogue(path, QStringLiteral("Bus"));
    (void)GetDatabaseProperties(path);
}

void ReadMarketCatalogue(const QString& path)
{
    LoadCatalogue(path, QString());
    (void)ReadMarkets(path);
}

void ReadSpecials(const QString& path)
{
    const CommandTable commands;
    CountingBoxes boxes;
    Host host;
    SpecialCommands specials(commands, host);
    specials.LoadSpecialCommands(path, boxes);
    if (host.ended != (boxes.count == 1))
        std::abort();
    for (int number = -1; number < CommandTable::kSize; ++number) {
        CSpecialCommand* command = specials.Find(number);
        if (!command)
            continue;
        for (const int data : {0, 0x0102, 0xFFFF}) {
            command->SelectItem(data, data & 1, data >> 1 & 1, false);
            (void)command->scFullName();
            if ((command->scData() & ~(command->CodeMask | command->NodeMask)) != 0)
                std::abort();
        }
    }
}

void ReadMaps(const QString& path)
{
    AsciiMap map;
    MayFail([&] { PopulateAsciiMaps(map, path); });
    const GlyphSheets sheets(map);
    // Cutting the glyphs takes long, and nothing can happen in a sheet.
    const auto isOutside = [](const AsciiMap::Entry& entry) {
        return std::max(std::abs(double(entry.xloc)), std::abs(double(entry.yloc))) > 1000;
    };
    if (std::ranges::any_of(map.entries, isOutside))
        (void)sheets.At(1);

    CharacterFace face(sheets, QSize(672, 740), Graphics::kColumns);
    Graphics graphics(face);
    CommandTable commands;
    commands[7].Name = QStringLiteral("Speed");
    commands[7].LastValue = 0xFFFF;
    commands.SetAnalogCommand(7, true);
    Analog analog(commands, graphics);
    MayFail([&] { analog.GetAnalogCommands(path); });
    analog.UpdateAnalog(7, true);
}

void ReadLegacy(const QString& path)
{
    (void)Protocol98::Complaint(path);
    (void)ReadLegacyInfo(path);
    Settings settings;
    settings.DatabasePath = QFileInfo(path).path();
    settings.DatabaseName = QFileInfo(path).fileName();
    CountingBoxes boxes;
    NoErrors errors;
    Protocol98 protocol(settings, boxes, errors);
    const bool loaded = protocol.LoadMessageTable();
    if (boxes.count > 1 || (!loaded && boxes.count == 0))
        std::abort();
    if (std::ranges::any_of(protocol.Messages(), [](const MessageEntry98& entry) { return entry.Divisor == 0; }))
        std::abort();
}

/// What a system has of its nodes, but for their relationships, which don't come back as they were written.
QByteArray TextOf(const CSystem& system)
{
    QString text;
    for (int number = 1; number <= system.NodesInSystem(); ++number) {
        const CNode& node = system.Nodes()[number];
        text += QStringLiteral("\n%1 %2 %3.%4 ")
                    .arg(number)
                    .arg(node.typeID())
                    .arg(node.osMajVersion())
                    .arg(node.osMinVersion()) +
                node.Name();
        for (int i = 1; i <= node.CDigitalInputs().Count(); ++i)
            text += u'\n' + node.CDigitalInputs()[i].Name() + QString::number(node.CDigitalInputs()[i].OnState());
        for (int i = 1; i <= node.COutputs().Count(); ++i)
            text += u'\n' + node.COutputs()[i].Name() + QString::number(node.COutputs()[i].UsageCode());
    }
    return text.toUtf8();
}

void ShowOutputs(const CSystem& system, const CommandTable& commands)
{
    for (int number = 1; number <= system.NodesInSystem(); ++number) {
        const CNode& node = system.Nodes()[number];
        for (int i = 1; i <= node.COutputs().Count(); ++i) {
            const COutput& output = node.COutputs()[i];
            for (int level = 0; level <= std::min(output.RLevelCount(), 3); ++level)
                (void)RelationshipTerms::RowsOf(output, level, commands);
        }
    }
}

void LoadInto(CSystem& system, Boxes& boxes, const QString& path)
{
    auto nodes = std::uint8_t(system.NodesInSystem());
    SystemDatabase(system, &boxes).Load(path, nodes, false);
    if (nodes != system.NodesInSystem())
        std::abort();
}

void ReadSystem(const QString& path)
{
    static const CommandTable commands;
    FuzzLink link({});
    CountingBoxes boxes;
    LoadInto(link.System(), boxes, path);
    ShowOutputs(link.System(), commands);
}

void SaveSystem(const QString& path)
{
    FuzzLink link({});
    CountingBoxes boxes;
    LoadInto(link.System(), boxes, path);
    if (!SystemDatabase(link.System(), &boxes).Make(path, path))
        return;
    FuzzLink again({});
    boxes.count = 0;
    LoadInto(again.System(), boxes, path);
    if (boxes.count > 0 || TextOf(again.System()) != TextOf(link.System()))
        std::abort();
}

void LookInside(const QString& path)
{
    QBuffer output;
    QBuffer errors;
    output.open(QIODevice::WriteOnly);
    errors.open(QIODevice::WriteOnly);
    CommandLine line;
    line.action = CommandLine::Action::Info;
    line.file = path;
    const int code = DavProgram(output, errors).Run(line);
    if (code != DavProgram::kGood && (code != DavProgram::kUnreadable || errors.data().isEmpty()))
        std::abort();
    MayFail([&] {
        const auto database = Database::OpenDatabase(path, false, true);
        for (const QString& table : database->TableNames())
            DumpTable(*database, table, output);
    });
}

struct Kind {
    QByteArray good;
    void (*read)(const QString& path);
};

const std::vector<Kind>& Kinds()
{
    static const QByteArray catalogue = HostileDatabase::Good(
        {"CREATE TABLE Commands (Command INTEGER, Name TEXT, CategoryID)", "CREATE TABLE Categorys (CategoryID, Name)",
         "CREATE TABLE Market (MarketID, MarketName)",
         "CREATE TABLE MrkCatCmdJoin (MarketID, CommandID, CommandName, CategoryName, "
         "CategoryID)",
         "CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)",
         "INSERT INTO Commands VALUES (12, 'Head Lamp', 1), (300, 'Battery', 9)",
         "INSERT INTO Categorys VALUES (1, 'Lamps'), (9, 'Gauges'), (99, 'Secret')",
         "INSERT INTO Market VALUES (1, 'Coach')", "INSERT INTO MrkCatCmdJoin VALUES (0, 21, 'Always', 'Lamps', 1)",
         "INSERT INTO SystemInfo VALUES ('Version', '1.0')"});
    static const QByteArray system =
        HostileDatabase::Good({"CREATE TABLE SystemInfo (PropertyName, PropertyValue)",
                               "CREATE TABLE \"Node 1\" (PropertyName, PropertyValue)",
                               "INSERT INTO SystemInfo VALUES ('Node Count', '2'), ('Version', '1+')",
                               "INSERT INTO \"Node 1\" VALUES ('Node Name', 'Rear'), ('Node Type', '2'), "
                               "('Node Major Version', '3'), ('Node Minor Version', '14'), ('@Input 1', NULL), "
                               "('Input Name', 'Door'), ('On State', '18'), ('@END', NULL), ('@Output 1', NULL), "
                               "('Output Name', 'Horn'), ('In Use', '1'), "
                               "('Relationships', char(254, 1, 255, 1, 255)), ('@END', NULL)"});
    static const std::vector<Kind> kinds{
        {catalogue, ReadCustomCatalogue},
        {catalogue, ReadMarketCatalogue},
        {HostileDatabase::Good({"CREATE TABLE Version (Version)",
                                "CREATE TABLE General (Command, CodeMask, CodeShift, NodeMask, NodeShift, "
                                "\"Text Seperator\", \"Requires Mount\")",
                                "CREATE TABLE Defaults (Command, State, extended, Extra, Icon)",
                                "CREATE TABLE Details (Command, Name, Code, State, extended, Extra, Icon)",
                                "INSERT INTO Version VALUES ('1.1')",
                                "INSERT INTO General VALUES (960, 255, 0, 65280, 8, ':', 0), "
                                "(966, 65280, 8, NULL, NULL, '-', -1)",
                                "INSERT INTO Defaults VALUES (960, -1, 0, NULL, 'Node')",
                                "INSERT INTO Details VALUES (960, 'Restart', 1, NULL, NULL, 'Rear', NULL), "
                                "(966, 'Up', 2, 1, 0, '#hint', 'Panel')"}),
         ReadSpecials},
        {HostileDatabase::Good({"CREATE TABLE AnalogSymbolMaps (Name, Decimal, scaled)",
                                "CREATE TABLE AsciiGraphicsMap (number, char, xloc, yloc)",
                                "INSERT INTO AnalogSymbolMaps VALUES ('Speed', 1, 'Degree')",
                                "INSERT INTO AsciiGraphicsMap VALUES (65, 'A', 14, 80), (0, NULL, 0, 0)"}),
         ReadMaps},
        {HostileDatabase::Good({"CREATE TABLE System (message, name, description, \"Ignore\", Divisor)",
                                "CREATE TABLE Info (SystemName, DateCreated, CreatedBy)",
                                "INSERT INTO System VALUES (1, 'Alive', 'Body', 0, 1), "
                                "(2, 'Volts', 'ANALOG', -1, 10), (3, 'Shed 1 ON', 'LOADSHED', 'true', NULL)",
                                "INSERT INTO Info VALUES ('Bus', '1998', NULL)"}),
         ReadLegacy},
        {system, ReadSystem},
        {system, SaveSystem},
        {catalogue, LookInside},
    };
    return kinds;
}

/// Nothing may lie beside the file, and it has to be as it was.
void CheckUntouched(const HostileDatabase& database, const QByteArray& before)
{
    const QFileInfo file(database.Path());
    const QStringList names = QDir(file.path()).entryList({file.fileName() + u'*'}, QDir::Files | QDir::Hidden);
    if (names.size() != 1 || database.Bytes() != before)
        std::abort();
}

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static QApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fenrik::FuzzSteps steps({reinterpret_cast<const char*>(data), size});
    const auto& kind = fenrik::Kinds()[steps.Byte() % fenrik::Kinds().size()];
    const fenrik::HostileDatabase database(kind.good, steps);
    const QByteArray before = database.Bytes();
    kind.read(database.Path());
    if (kind.read != fenrik::SaveSystem)
        fenrik::CheckUntouched(database, before);
    return 0;
}
