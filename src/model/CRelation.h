#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// One term of an output's relationship as the user sees it.
struct CRelation {
    std::int16_t icommand = 0;  ///< command number; 0 for a term that is an operator only
    QString Op;                 ///< text of the operator
};

}  // namespace fenrik
