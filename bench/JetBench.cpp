// Opening genuine databases of three megabytes: a command catalogue with long names, as Jet 3 and as Jet 4, from the
// file to the last table and query.

#include "platform/Database.h"
#include "platform/Recordset.h"
#include "support/DatabaseFile.h"
#include "support/JetCatalogue.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace fenrik {
namespace {

constexpr qsizetype kFileSize = 3 << 20;

QByteArray MakeLargeFile(JetFileWriter::Version version)
{
    QByteArray bytes;
    for (int commands = 10'000; bytes.size() < kFileSize; commands += 1'000)
        bytes = MakeJetCatalogue(version, commands, MarketJoinParts(), QString(60, 'x'));
    return bytes;
}

void Open(benchmark::State& state, JetFileWriter::Version version)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("large.dav");
    MakeFile(path, MakeLargeFile(version));
    for (auto _ : state) {
        const auto database = Database::OpenDatabase(path, false, true);
        if (!database->LeftOut().empty())
            state.SkipWithError("a table or query was left out");
    }
    state.counters["rows"] = Database::OpenDatabase(path, false, true)->OpenRecordset("Commands")->RecordCount();
}

BENCHMARK_CAPTURE(Open, Jet3, JetFileWriter::Version::kJet3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, Jet4, JetFileWriter::Version::kJet4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace fenrik

BENCHMARK_MAIN();
