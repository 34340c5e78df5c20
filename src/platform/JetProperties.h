#pragma once

#include "platform/JetTypes.h"

#include <QMap>

namespace fenrik {

/// The properties that a Jet file keeps of an object as a whole, by name (in lower case), from the object's property
/// block. A block that is damaged gives what stands before the damage.
///
///   block:     4 bytes mark, "KKD\0" or "MR2\0"; then chunks
///   chunk:     4 bytes length (its own six included), 2 bytes kind, content
///   kind 80:   names: 2 bytes length, name; and so on
///   kind 0:    properties of the object: 4 bytes length of a head (its own four included), rest of the head; then each
///              property: 2 bytes length (its own eight included), flag, type, 2 bytes number of the name from 0,
///              2 bytes length of the value, value
[[nodiscard]] QMap<QString, QVariant> ReadJetProperties(QByteArrayView block, JetText encoding);

}  // namespace fenrik
