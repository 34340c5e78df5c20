#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// One entry in the log of the older network.
struct CMessage98 {
    std::int32_t Node = 0;  ///< 1 to 6; 0 for what no node sent
    QString Name;
    std::int32_t data = 0;
    QString Desc;
    float TimeStamp = 0;  ///< seconds since midnight
};

}  // namespace fenrik
