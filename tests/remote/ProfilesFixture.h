#pragma once

#include "platform/RegistryStore.h"
#include "remote/MRegistry.h"
#include "remote/PipeSettings.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/Printers.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace fenrik {

/// Profiles in a registry of the test's own.
class ProfilesTest : public testing::Test {
protected:
    static QString Path(const QString& uniqueID = {}) { return QLatin1String(PipeSettings::kProfilesPath) + uniqueID; }

    /// A registry that can't be written: a file stands where its folder should be.
    QString UnusablePath() const
    {
        QFile inTheWay(folder.path() + QStringLiteral("/file"));
        EXPECT_TRUE(inTheWay.open(QIODevice::WriteOnly));
        return inTheWay.fileName() + QStringLiteral("/registry.ini");
    }

    QTemporaryDir folder;
    RegistryStore store{folder.path() + QStringLiteral("/registry.ini")};
    ErrorRecorder errors;
    BoxRecorder boxes;
    FakeClock clock;
    MRegistry registry{store, errors};
    int made = 0;
    PipeSettings settings{registry, boxes, clock, [this] { return QStringLiteral("{ID-%1}").arg(++made); }};
    const CPipeProfile ann{"Ann", "ann-id", "relay.example", 48051, "{ANN}"};
    const CPipeProfile bob{"Bob", "bob-id", "192.0.2.7", 4000, "{BOB}"};
};

}  // namespace fenrik
