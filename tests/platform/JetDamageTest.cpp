// Genuine files with damage at random: none may crash the reader, keep it busy or fill the memory.

#include "platform/Error.h"
#include "platform/JetCopy.h"
#include "support/JetCatalogue.h"
#include "support/Printers.h"

#include <ctime>
#include <gtest/gtest.h>
#include <random>

namespace fenrik {
namespace {

using Version = JetFileWriter::Version;

/// A file with everything in it that the reader has a branch for.
QByteArray MakeRichFile(Version version)
{
    JetFileWriter writer(version);
    writer.SetVersionProperties("07.53", 4122);
    std::vector<JetFileWriter::Row> rows;
    for (int i = 0; i < 60; ++i)
        rows.push_back({i % 2 == 0, i, QString("Name %1").arg(i), QString(i * 40, 'm'), QByteArray(i * 100, 'o')});
    writer.AddTable("Things",
                    {{"Flag", JetType::kBoolean},
                     {"Number", JetType::kLong},
                     {"Name", JetType::kText},
                     {"Memo", JetType::kMemo},
                     {"Ole", JetType::kOle}},
                    rows);
    writer.PutRowsElsewhere();
    writer.AddTable("Moved", {{"Number", JetType::kLong}}, {{1}, {2}, {3}});
    writer.AddQuery("MrkCatCmdJoin", MarketJoinParts());
    return writer.Bytes();
}

class Damage {
public:
    explicit Damage(unsigned seed) : mRandom(seed) {}

    QByteArray Apply(QByteArray bytes, int pageSize)
    {
        switch (Below(5)) {
        case 0:
            return bytes.left(Below(int(bytes.size()) / pageSize) * pageSize);
        case 1: {  // one page in place of another: pages that point back, pages of another kind
            const int to = Below(int(bytes.size()) / pageSize) * pageSize;
            const int from = Below(int(bytes.size()) / pageSize) * pageSize;
            return bytes.replace(to, pageSize, bytes.mid(from, pageSize));
        }
        case 2: {
            const int length = 1 + Below(pageSize);
            return bytes.replace(Below(int(bytes.size()) - length), length,
                                 QByteArray(length, Below(2) ? '\xFF' : '\0'));
        }
        default:
            for (int flips = 1 + Below(30); flips > 0; --flips)
                bytes[Place(int(bytes.size()), pageSize)] = char(Below(256));
            return bytes;
        }
    }

private:
    int Below(int limit) { return int(mRandom() % unsigned(qMax(limit, 1))); }

    // Heads and tails of pages are where the structure is.
    int Place(int size, int pageSize)
    {
        const int page = Below(size / pageSize) * pageSize;
        const int kind = Below(3);
        return page + (kind == 0 ? Below(pageSize) : kind == 1 ? Below(90) : pageSize - 1 - Below(90));
    }

    std::mt19937 mRandom;
};

class JetDamage : public testing::TestWithParam<Version> {};

INSTANTIATE_TEST_SUITE_P(Jet, JetDamage, testing::Values(Version::kJet3, Version::kJet4),
                         [](const auto& row) { return row.param == Version::kJet3 ? "Jet3" : "Jet4"; });

TEST_P(JetDamage, IsReadOrRefusedButNeverMoreThanThat)
{
    constexpr int kFiles = 500;
    const QByteArray good = MakeRichFile(GetParam());
    const int pageSize = GetParam() == Version::kJet3 ? 2048 : 4096;
    Damage damage(20261121);
    int refused = 0;
    const std::clock_t start = std::clock();
    for (int i = 0; i < kFiles; ++i) {
        try {
            (void)CopyJetFile(damage.Apply(good, pageSize), "damaged.dav");
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken) << error.what();
            EXPECT_TRUE(error.Description().contains("damaged.dav"));
            ++refused;
        }
    }
    EXPECT_GT(refused, kFiles / 10);
    EXPECT_LT(refused, kFiles);
    constexpr double kSecondsOfProcessor = 0.1;
    EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC / kFiles, kSecondsOfProcessor);
}

}  // namespace
}  // namespace fenrik
