#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

/// A relationship as a text that a database can carry: its bytes as characters of Windows-1252, which has one for each
/// (its five unassigned codes stand for the control characters of the same number). Two bytes are no text:
///
///   byte  written as
///   0     255, 1
///   255   255, 255
[[nodiscard]] QString RelationshipToText(const QByteArray& relationship);

/// Reads what RelationshipToText wrote, and is not its exact inverse: it works through the text from its end, so that a
/// 255 whose pair was read meets the byte behind it and is taken for the first half of a pair once more, and it adds a
/// byte of 255. The ends of inner levels are lost so. The files have always been read this way. A character outside the
/// page becomes "?".
[[nodiscard]] QByteArray RelationshipFromText(const QString& text);

}  // namespace fenrik
