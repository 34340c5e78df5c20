#pragma once

#include "support/JetFileWriter.h"

namespace fenrik {

/// The parts of the stored query that joins commands to markets, as the designer of the files' engine stores them.
inline std::vector<JetQueryPart> MarketJoinParts()
{
    const auto part = [](int attribute, char order, const char* expression, const char* name1 = "",
                         const char* name2 = "", int flag = 0) {
        return JetQueryPart{attribute,
                            QByteArray(3, '\0') + order,
                            flag,
                            QString::fromLatin1(name1),
                            QString::fromLatin1(name2),
                            QString::fromLatin1(expression)};
    };
    return {part(0, 0, ""),
            part(3, 1, "", "", "", 8),
            part(5, 2, "", "Categorys"),
            part(5, 3, "", "Commands"),
            part(5, 4, "", "MarketCategorys"),
            part(6, 5, "MarketCategorys.MarketID"),
            part(6, 6, "Commands.Command", "CommandID"),
            part(6, 7, "[Commands].[Name]", "CommandName"),
            part(6, 8, "Categorys.Name", "CategoryName"),
            part(6, 9, "Categorys.CategoryID"),
            part(7, 10, "Categorys.CategoryID = Commands.CategoryID", "Categorys", "Commands", 1),
            part(7, 11, "Categorys.CategoryID = MarketCategorys.CategoryID", "Categorys", "MarketCategorys", 1),
            part(255, 12, "")};
}

/// A genuine command database: `commands` commands numbered from 1, named "Command <number> <padding>" but for the
/// first two, whose names need Windows-1252; every second one in category 1, the others in 2; market 0 has category 1
/// and market 7 category 2. `join` is the stored query MrkCatCmdJoin; without parts there is none.
inline QByteArray MakeJetCatalogue(JetFileWriter::Version version, int commands,
                                   const std::vector<JetQueryPart>& join = MarketJoinParts(),
                                   const QString& padding = {})
{
    using Rows = std::vector<JetFileWriter::Row>;
    const auto number = JetType::kLong;
    const auto text = JetType::kText;
    Rows rows;
    for (int command = 1; command <= commands; ++command)
        rows.push_back({command, QStringLiteral("Command %1%2").arg(command).arg(padding), command % 2 ? 1 : 2});
    if (commands > 1) {
        rows[0][1] = QStringLiteral("Heizlüfter – 20 €");
        rows[1][1] = QStringLiteral("Tür „hinten“");
    }
    JetFileWriter writer(version);
    writer.SetVersionProperties(QStringLiteral("07.53"), 4122);
    writer.AddTable("Commands", {{"Command", number}, {"Name", text}, {"CategoryID", number}}, rows);
    writer.AddTable("Categorys", {{"CategoryID", number}, {"Name", text}},
                    Rows{{1, "Türen"}, {2, "Licht"}, {9, "Analog"}, {99, "Hidden"}});
    writer.AddTable("Market", {{"MarketID", number}, {"MarketName", text}}, Rows{{7, "Coach"}});
    writer.AddTable("MarketCategorys", {{"MarketID", number}, {"CategoryID", number}}, Rows{{0, 1}, {7, 2}});
    writer.AddTable("SystemInfo", {{"PropertyName", text}, {"PropertyValue", text}},
                    Rows{{"Node Count", "2"}, {"Version", "1.7"}});
    if (!join.empty())
        writer.AddQuery("MrkCatCmdJoin", join);
    return writer.Bytes();
}

}  // namespace fenrik
