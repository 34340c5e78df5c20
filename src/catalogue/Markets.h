#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

/// A subset of the default database's commands, by the kind of vehicle.
struct Market {
    std::int32_t id;
    QString name;
};

/// The markets of the command database `path`, in the order of its rows; none if anything is wrong with it. Market 0 is
/// part of every subset and no choice.
[[nodiscard]] std::vector<Market> ReadMarkets(const QString& path);

}  // namespace fenrik
