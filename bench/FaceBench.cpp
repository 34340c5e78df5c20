// What it costs to draw the character face anew, all of it and one character, at the scale factors of screens.

#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"

#include <QApplication>

#include <benchmark/benchmark.h>

namespace fenrik {
namespace {

constexpr QSize kFace(672, 740);
constexpr int kCells = 32;

AsciiMap MapOfTheSheets()
{
    AsciiMap map;
    for (int code = 0; code < 256; ++code) {
        map.entries[std::size_t(code)].xloc = code % 16 * Glass::kGlyphWidth;
        map.entries[std::size_t(code)].yloc = code / 16 * Glass::kGlyphHeight;
    }
    return map;
}

/// A face on a screen of any pixel ratio, and the picture that it is painted to.
class FaceOnScreen : public CharacterFace {
public:
    FaceOnScreen(const GlyphSheets& sheets, double ratio)
        : CharacterFace(sheets, kFace, kCells), mRatio(ratio), mScreen(kFace * ratio, QImage::Format_RGB32)
    {
        mScreen.setDevicePixelRatio(ratio);
        Paint(rect());  // glyphs are prepared once
    }

    void Paint(const QRect& part) { render(&mScreen, part.topLeft(), part, RenderFlags()); }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        if (which == PdmDevicePixelRatio)
            return int(mRatio);
        return which == PdmDevicePixelRatioScaled ? int(mRatio * devicePixelRatioFScale())
                                                  : CharacterFace::metric(which);
    }

private:
    double mRatio;
    QImage mScreen;
};

void PutAll(CharacterFace& face, int turn)
{
    face.Clear();
    for (int row = 0; row < kCells; ++row) {
        for (int column = 0; column < kCells; ++column)
            face.Put(Glass::kMargin + column * Glass::kCellWidth, Glass::kMargin + row * Glass::kCellHeight,
                     std::uint8_t(33 + (turn + row + column) % 90), turn % 2 == 0);
    }
}

/// Cleared, every cell another character, painted in full.
void Full(benchmark::State& state)
{
    const AsciiMap map = MapOfTheSheets();
    const GlyphSheets sheets(map);
    FaceOnScreen face(sheets, double(state.range(0)) / 100.0);
    int turn = 0;
    for ([[maybe_unused]] auto step : state) {
        PutAll(face, ++turn);
        face.Paint(face.rect());
    }
}

void Cell(benchmark::State& state)
{
    const AsciiMap map = MapOfTheSheets();
    const GlyphSheets sheets(map);
    FaceOnScreen face(sheets, double(state.range(0)) / 100.0);
    int turn = 0;
    for ([[maybe_unused]] auto step : state) {
        face.Put(Glass::kMargin, Glass::kMargin, std::uint8_t('0' + ++turn % 2), false);
        face.Paint(QRect(Glass::kMargin, Glass::kMargin, Glass::kGlyphWidth, Glass::kGlyphHeight));
    }
}

BENCHMARK(Full)->Name("Face/Full")->Arg(100)->Arg(150)->Arg(200);
BENCHMARK(Cell)->Name("Face/Cell")->Arg(100)->Arg(150)->Arg(200);

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
