// What the package says of the program has to be true of it.

#include "project/ProjectFiles.h"
#include "support/Printers.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::IsEmpty;

QString Text(const char* path)
{
    QFile file(ProjectRoot() + QLatin1Char('/') + QLatin1String(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString FirstOf(const char* path, const char* pattern)
{
    return QRegularExpression(QLatin1String(pattern)).match(Text(path)).captured(1);
}

QSet<QString> LongOptions(const QString& text)
{
    static const QRegularExpression kOption(QStringLiteral("--([a-z][a-z-]+)"));
    QSet<QString> options;
    for (auto found = kOption.globalMatch(text); found.hasNext();)
        options.insert(found.next().captured(1));
    return options;
}

TEST(Packaging, HasOneVersionEverywhere)
{
    const QString version = FirstOf("CMakeLists.txt", "project\\(FenrikDiagnostics VERSION ([0-9.]+)");
    EXPECT_FALSE(version.isEmpty());
    EXPECT_EQ(FirstOf("packaging/debian/changelog", "^fenrik-diagnostics \\(([0-9.]+)\\)"), version);
    EXPECT_EQ(FirstOf("packaging/fenrik-diagnostics.metainfo.xml", "<release version=\"([0-9.]+)\""), version);
}

TEST(Packaging, TheMenuEntryStartsTheProgramWithItsIcon)
{
    const QString entry = Text("packaging/fenrik-diagnostics.desktop");
    EXPECT_TRUE(entry.contains(QStringLiteral("\nExec=fenrik-diagnostics\n")));
    EXPECT_TRUE(entry.contains(QStringLiteral("\nIcon=fenrik-diagnostics\n")));
    EXPECT_TRUE(QFile::exists(ProjectRoot() + QStringLiteral("/assets/icons/fenrik-diagnostics.svg")));
}

TEST(Packaging, TheUdevRulesAreForTheTransceiverThatTheToolFinds)
{
    const QString rules = Text("packaging/fenrik-transceiver.rules");
    EXPECT_TRUE(rules.contains(QStringLiteral("ATTRS{idVendor}==\"0403\", ATTRS{idProduct}==\"6001\"")));
    EXPECT_TRUE(Text("packaging/debian/rules").contains(QStringLiteral("--name=fenrik-transceiver --priority=70")));
    EXPECT_TRUE(Text("src/link/ConnectAdvice.cpp").contains(QStringLiteral("70-fenrik-transceiver.rules")))
        << "the tool names another file";
    const QString ports = Text("src/platform/ComPorts.cpp");
    EXPECT_TRUE(ports.contains(QStringLiteral("0x0403"))) << "the tool looks for another vendor";
    EXPECT_TRUE(ports.contains(QStringLiteral("0x6001"))) << "the tool looks for another product";
}

const QStringList kPrograms{QStringLiteral("fenrik-dav"), QStringLiteral("fenrik-relay"),
                            QStringLiteral("fenrik-vehicle")};

QString HelpOf(const QString& program)
{
    QProcess process;
    process.start(QStringLiteral(FENRIK_BIN_FOLDER "/") + program, {QStringLiteral("--help")});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(Packaging, ManPagesNameOptionsThatThereAre)
{
    QSet<QString> known{QStringLiteral("now")};  // of systemctl
    for (const QString& program : kPrograms)
        known += LongOptions(HelpOf(program));
    for (const QString& program : kPrograms) {
        const QString page = Text(qPrintable(QStringLiteral("docs/man/%1.1").arg(program)));
        const QSet<QString> named = LongOptions(QString(page).remove(QLatin1Char('\\')));
        EXPECT_FALSE(named.isEmpty()) << qPrintable(program);
        EXPECT_THAT((named - known).values(), IsEmpty()) << qPrintable(program);
    }
}

}  // namespace
}  // namespace fenrik
