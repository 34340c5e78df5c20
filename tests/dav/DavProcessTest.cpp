#include "support/DatabaseFile.h"
#include "support/JetCatalogue.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class DavProcess : public testing::Test {
protected:
    DavProcess() { MakeFile(path, MakeJetCatalogue(JetFileWriter::Version::kJet4, 2000)); }

    int Run(const QStringList& arguments, const QString& outputFile = {})
    {
        QProcess process;
        // The program needs no display, so it gets none.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        process.setProcessEnvironment(environment);
        if (!outputFile.isEmpty())
            process.setStandardOutputFile(outputFile);
        process.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-dav"), arguments);
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
            return -1;
        output = process.readAllStandardOutput();
        errors = process.readAllStandardError();
        return process.exitCode();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("genuine.dav");
    QByteArray output;
    QByteArray errors;
};

TEST_F(DavProcess, HasItsExitCodesAndItsTwoOutputs)
{
    EXPECT_EQ(Run({"dump", path, "Commands"}), 0);
    EXPECT_EQ(output.count('\n'), 2001);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(Run({}), 1);
    EXPECT_EQ(Run({"info", folder.filePath("absent.dav")}), 2);
    EXPECT_EQ(output, "");
    EXPECT_TRUE(errors.startsWith("fenrik-dav: "));
}

TEST_F(DavProcess, ADamagedFileIsToldInOneLine)
{
    JetFileWriter writer(JetFileWriter::Version::kJet4);
    const QByteArray bytes = writer.Bytes();
    // The list of the catalogue's pages names pages far behind the end.
    MakeFile(path, bytes.left(bytes.size() - 64) + QByteArray(64, '\xFF'));
    EXPECT_EQ(Run({"info", path}), 2);
    EXPECT_TRUE(errors.startsWith("fenrik-dav: The Jet database "));
    EXPECT_EQ(errors.count('\n'), 1);
}

TEST_F(DavProcess, AFullDiskUnderTheOutputIsTold)
{
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    EXPECT_EQ(Run({"dump", path, "Commands"}, "/dev/full"), 3);
    EXPECT_TRUE(errors.contains("can't be written"));
}

}  // namespace
}  // namespace fenrik
