#include "e2e/Scenarios.h"

#include <QFile>

#include <gtest/gtest.h>

namespace fenrik {

QString ScenarioPath(const char* name)
{
    return QStringLiteral(FENRIK_SCENARIO_FOLDER "/") + QLatin1String(name);
}

QByteArray ScenarioText(const char* name)
{
    QFile file(ScenarioPath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

}  // namespace fenrik
