// fenrik-glyphs <folder of glyph drawings> <output folder>
//
// Makes the glyph sheets of the character faces from the drawings in glyphs/*.txt. A drawing is a line with the
// character's code and name, then ten rows of seven dots, "#" lit and "." dark; an empty line ends it. A sheet holds
// 16 by 16 glyphs in the order of their codes, without gaps, once for each scale factor: PicAscii-100.png (bright) and
// PicAsciiDim-100.png, and the same for 150 and 200 percent. At these factors a dot has a whole number of pixels.

#include "diagnostics/Glass.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <vector>

using namespace fenrik;

namespace {

constexpr int kDotsAcross = 7;
constexpr int kDotsDown = 10;
constexpr int kGlyphs = 256;
constexpr int kPerRow = 16;

using Drawing = std::array<std::array<bool, kDotsAcross>, kDotsDown>;

struct Font {
    std::array<Drawing, kGlyphs> drawings{};
    std::array<bool, kGlyphs> present{};
};

[[noreturn]] void Fail(const QString& text)
{
    throw std::runtime_error(text.toStdString());
}

Drawing ReadDrawing(QTextStream& lines, const QString& heading)
{
    Drawing drawing{};
    for (auto& row : drawing) {
        const QString line = lines.readLine();
        if (line.size() != kDotsAcross)
            Fail(QStringLiteral("glyph %1: each row has seven dots").arg(heading));
        for (int dot = 0; dot < kDotsAcross; ++dot)
            row[dot] = line[dot] == QLatin1Char('#');
    }
    return drawing;
}

void ReadFile(const QString& path, Font& font)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        Fail(path + QStringLiteral(": ") + file.errorString());
    QTextStream lines(&file);
    QString heading;
    while (lines.readLineInto(&heading)) {
        if (heading.isEmpty())
            continue;
        bool isNumber = false;
        const int code = heading.section(QLatin1Char(' '), 0, 0).toInt(&isNumber);
        if (!isNumber || code < 0 || code >= kGlyphs || font.present[code])
            Fail(QStringLiteral("%1: no new character code in \"%2\"").arg(path, heading));
        font.present[code] = true;
        font.drawings[code] = ReadDrawing(lines, heading);
    }
}

Font ReadFont(const QString& folder)
{
    Font font;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.txt")}, QDir::Files))
        ReadFile(dir.filePath(name), font);
    const auto missing = std::find(font.present.begin(), font.present.end(), false);
    if (missing != font.present.end())
        Fail(QStringLiteral("glyph %1 has no drawing").arg(missing - font.present.begin()));
    return font;
}

/// How much of each pixel of a dot is covered: a square with rounded corners that leaves a hair's breadth to its
/// neighbours. A small dot is nearly square, or it would lose too much of its light.
std::vector<double> DotCoverage(int pixels)
{
    constexpr int kSamples = 16;
    const double size = pixels * (pixels > 2 ? 0.92 : 0.97);
    const double radius = pixels * (pixels > 2 ? 0.34 : 0.2);
    const auto inside = [&](double x, double y) {
        const double dx = std::max({radius - x, x - (size - radius), 0.0});
        const double dy = std::max({radius - y, y - (size - radius), 0.0});
        return dx * dx + dy * dy <= radius * radius;
    };
    std::vector<double> coverage(std::size_t(pixels * pixels));
    for (int n = 0; n < pixels * pixels * kSamples * kSamples; ++n) {
        const int pixel = n / (kSamples * kSamples);
        const int sample = n % (kSamples * kSamples);
        const double x = pixel % pixels + (sample % kSamples + 0.5) / kSamples;
        const double y = pixel / pixels + (sample / kSamples + 0.5) / kSamples;
        coverage[std::size_t(pixel)] += inside(x, y) ? 1.0 / (kSamples * kSamples) : 0.0;
    }
    return coverage;
}

QRgb Mix(QRgb from, QRgb to, double share)
{
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return qRgb(channel(qRed(from), qRed(to)), channel(qGreen(from), qGreen(to)), channel(qBlue(from), qBlue(to)));
}

/// What the lit dots around spill on a point in the middle between the dots of the drawing.
double Glow(const Drawing& drawing, double dotX, double dotY)
{
    double sum = 0.0;
    for (int y = 0; y < kDotsDown; ++y) {
        for (int x = 0; x < kDotsAcross; ++x) {
            const double distance = std::hypot(x + 0.5 - dotX, y + 0.5 - dotY);
            if (drawing[y][x] && distance < 2.0)
                sum += 0.11 * (1.0 - distance / 2.0);
        }
    }
    return std::min(sum, 0.2);
}

void DrawGlyph(QImage& sheet, QPoint corner, const Drawing& drawing, int dot, QRgb light)
{
    const std::vector<double> coverage = DotCoverage(dot);
    for (int y = 0; y < kDotsDown * dot; ++y) {
        for (int x = 0; x < kDotsAcross * dot; ++x) {
            const bool lit = drawing[y / dot][x / dot];
            const double covered = coverage[std::size_t(y % dot * dot + x % dot)];
            const double glow = Glow(drawing, (x + 0.5) / dot, (y + 0.5) / dot);
            const QRgb glass = Mix(Glass::kGround, light, glow);
            const QRgb off = Mix(Glass::kUnlit, light, glow);
            sheet.setPixel(corner + QPoint(x, y), Mix(glass, lit ? light : off, covered));
        }
    }
}

void WriteSheet(const Font& font, const QString& path, int dot, QRgb light)
{
    const QSize glyph(kDotsAcross * dot, kDotsDown * dot);
    QImage sheet(glyph * kPerRow, QImage::Format_RGB32);
    for (int code = 0; code < kGlyphs; ++code) {
        const QPoint corner(code % kPerRow * glyph.width(), code / kPerRow * glyph.height());
        DrawGlyph(sheet, corner, font.drawings[std::size_t(code)], dot, light);
    }
    if (!sheet.save(path, "PNG"))
        Fail(path + QStringLiteral(" can't be written"));
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: fenrik-glyphs <glyph folder> <output folder>\n");
        return 2;
    }
    try {
        const Font font = ReadFont(QString::fromLocal8Bit(argv[1]));
        const QDir out(QString::fromLocal8Bit(argv[2]));
        out.mkpath(QStringLiteral("."));
        for (const int dot : {2, 3, 4}) {
            const QString percent = QStringLiteral("-%1.png").arg(dot * 50);
            WriteSheet(font, out.filePath(QStringLiteral("PicAscii") + percent), dot, Glass::kBright);
            WriteSheet(font, out.filePath(QStringLiteral("PicAsciiDim") + percent), dot, Glass::kDim);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fenrik-glyphs: %s\n", error.what());
        return 1;
    }
    return 0;
}
