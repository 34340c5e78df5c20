#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

/// The scenarios that come with the simulator, by their file's name: "day.txt".
[[nodiscard]] QString ScenarioPath(const char* name);

/// Its statements; fails the test if there is no such scenario.
[[nodiscard]] QByteArray ScenarioText(const char* name);

}  // namespace fenrik
