#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// What a node's flash header says of the configuration that the node carries. Texts that could not be read
/// are "??".
struct HeaderRecord {
    QString nodeNumber = QStringLiteral("??");
    QString nodeCount = QStringLiteral("??");  ///< nodes of the design
    QString versionFirst = QStringLiteral("??");
    QString versionSecond = QStringLiteral("??");
    QString versionThird = QStringLiteral("??");
    QString versionFourth = QStringLiteral("??");  ///< carried, not shown
    QString dateFirst = QStringLiteral("??");
    QString dateSecond = QStringLiteral("??");
    QString year = QStringLiteral("??");  ///< last two digits
    std::int16_t word1 = 0;               ///< bytes 1 and 2, carried only; likewise the next three
    std::int16_t word3 = 0;
    std::int16_t word5 = 0;
    QString byte7 = QStringLiteral("??");
};

}  // namespace fenrik
