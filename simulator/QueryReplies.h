#pragma once

#include "simulator/NodeConfig.h"

#include <optional>
#include <span>
#include <string_view>

namespace fenrik {

/// A query of command 940: what its data word says beside the reference.
struct QueryKind {
    std::string_view word;  ///< for scenarios
    std::uint16_t code;     ///< data; the low byte of the reference is added if it has one
    bool hasReference;
};

/// The reply to a query, as it is cut into frames.
struct QueryReply {
    ByteString bytes;
    bool bigEndian = false;  ///< what the announcing frame says in `extended`
};

/// The kinds of queries that a node may know.
[[nodiscard]] std::span<const QueryKind> QueryKinds();

/// The kind that the data word of a query names, or null.
[[nodiscard]] const QueryKind* FindQueryKind(std::uint16_t data);

/// What the node's configuration says to the query `data`, its reference completed by `page` as the high byte; nothing
/// if there is no such query or nothing under that reference.
[[nodiscard]] std::optional<QueryReply> MakeQueryReply(const NodeConfig& node, std::uint16_t data, std::uint8_t page);

}  // namespace fenrik
