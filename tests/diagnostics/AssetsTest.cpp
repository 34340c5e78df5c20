// The pictures that the build makes are in the program, in the sizes that the faces and buttons count on.

#include "diagnostics/CodePage437.h"
#include "diagnostics/FaceFixture.h"

#include <QDir>

#include <map>

namespace fenrik {
namespace {

struct Sheet {
    const char* name;
    int percent;
};

class Sheets : public testing::TestWithParam<Sheet> {};

TEST_P(Sheets, HoldSixteenBySixteenGlyphs)
{
    const QImage sheet(
        QStringLiteral(":/glyphs/%1-%2.png").arg(QLatin1String(GetParam().name)).arg(GetParam().percent));
    EXPECT_EQ(sheet.size(), QSize(16 * 14, 16 * 20) * GetParam().percent / 100);
}

INSTANTIATE_TEST_SUITE_P(Assets, Sheets,
                         testing::Values(Sheet{"PicAscii", 100}, Sheet{"PicAscii", 150}, Sheet{"PicAscii", 200},
                                         Sheet{"PicAsciiDim", 100}, Sheet{"PicAsciiDim", 150},
                                         Sheet{"PicAsciiDim", 200}),
                         [](const auto& row) { return row.param.name + std::to_string(row.param.percent); });

TEST(Assets, OnlyBlanksAreEmptyAndNoTwoGlyphsAreAlike)
{
    const QImage sheet(QStringLiteral(":/glyphs/PicAscii-100.png"));
    const QImage blank = GlyphOf(sheet, CodePage437::kBlank);
    std::map<QByteArray, int> seen;
    for (int code = 1; code < 255; ++code) {
        const QImage glyph = GlyphOf(sheet, code);
        EXPECT_EQ(glyph == blank, code == CodePage437::kBlank) << code;
        const QByteArray pixels(reinterpret_cast<const char*>(glyph.constBits()), glyph.sizeInBytes());
        const auto [other, isNew] = seen.emplace(pixels, code);
        EXPECT_TRUE(isNew) << code << " looks like " << other->second;
    }
}

TEST(Assets, EveryIconIsThereInBothSizes)
{
    const QDir icons(QStringLiteral(":/icons"));
    const QStringList names = icons.entryList();
    ASSERT_FALSE(names.isEmpty());
    for (QString name : names) {
        if (name.contains(QStringLiteral("@2x")))
            continue;
        const QImage small(icons.filePath(name));
        const QImage large(icons.filePath(name.replace(QStringLiteral(".png"), QStringLiteral("@2x.png"))));
        EXPECT_FALSE(small.isNull()) << name.toStdString();
        EXPECT_EQ(large.size(), small.size() * 2) << name.toStdString();
    }
}

class Icons : public testing::TestWithParam<const char*> {};

TEST_P(Icons, AreThere)
{
    EXPECT_FALSE(QImage(QStringLiteral(":/icons/%1.png").arg(QLatin1String(GetParam()))).isNull());
}

INSTANTIATE_TEST_SUITE_P(Assets, Icons,
                         testing::Values("Harnwick", "Port", "System", "ConnectUsing_101", "ConnectUsing_102",
                                         "ConnectUsing_103", "Connect", "Disconnect", "Clear", "DetectNodes", "Analog",
                                         "States", "OutputDiagnostics", "FlashInfo", "InputDiagnostics", "Collision",
                                         "Refresh", "Save", "About", "Log", "DiagLog", "RDUsers", "RDChat", "RDPing",
                                         "OpenRemote", "CloseRemote", "Mount", "Unmount", "Ping", "On", "Off",
                                         "Command", "Info", "Error", "Lamp", "Door", "Wrench", "Warning", "Fault",
                                         "RLevel", "UnPiped", "Waiting", "Denied", "Granted", "Node", "NodeMounted",
                                         "Blank", "imgBug"));

}  // namespace
}  // namespace fenrik
