#pragma once

#include "catalogue/SystemList.h"

namespace fenrik {

/// What is shown of a line of the list of systems.
struct SystemDetails {
    QString path;  ///< of the database; of a system of nothing but images its folder
    QString version = QStringLiteral("No custom Command Database found.");
    QString modified;  ///< date and time of the database
    QString nodes = QStringLiteral("Unknown");
};

[[nodiscard]] SystemDetails DetailsOf(const SystemList& list, const SystemLine& line);

}  // namespace fenrik
