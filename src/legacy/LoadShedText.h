#pragma once

#include <QString>

namespace fenrik {

/// The load-shed line of the panel, read out of a message's name as "Load Shed Level 3 ON".
struct LoadShedText {
    QString text;     ///< "LS3   ON "
    bool on = false;  ///< the loads are shed

    /// The level is the first number of `name` that is not 0, 0 if there is none; the state is "OFF" or, also where
    /// the name has both, "ON". Capitals count.
    [[nodiscard]] static LoadShedText Of(const QString& name);
};

}  // namespace fenrik
