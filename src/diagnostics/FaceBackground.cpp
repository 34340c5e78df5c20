#include "diagnostics/FaceBackground.h"

#include "diagnostics/CodePage437.h"
#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"

#include <QPainter>

#include <cmath>

namespace fenrik {

namespace {

constexpr int kPerRow = 16;

void DrawUnlitCells(QPainter& painter, QSize size, double ratio, const GlyphAtlas& glyphs)
{
    const QRect blank(QPoint(CodePage437::kBlank % kPerRow * glyphs.glyph.width(),
                             CodePage437::kBlank / kPerRow * glyphs.glyph.height()),
                      glyphs.glyph);
    for (int y = Glass::kMargin; y + Glass::kGlyphHeight <= size.height(); y += Glass::kCellHeight) {
        for (int x = Glass::kMargin; x + Glass::kGlyphWidth <= size.width(); x += Glass::kCellWidth) {
            painter.drawImage(QPoint(qRound(x * ratio), qRound(y * ratio)), glyphs.bright, blank);
        }
    }
}

/// The bezel's shadow, in the margin around the cells.
void DrawEdge(QPainter& painter, QSize device, double ratio)
{
    const int depth = qRound(Glass::kMargin * ratio) - 1;
    for (int step = 0; step < depth; ++step) {
        QColor shade = QColor::fromRgb(Glass::kEdge);
        shade.setAlphaF(float(1.0 - double(step) / depth));
        painter.setPen(shade);
        painter.drawRect(step, step, device.width() - 1 - 2 * step, device.height() - 1 - 2 * step);
    }
}

}  // namespace

QImage FaceBackground(QSize size, double ratio, const GlyphAtlas& glyphs)
{
    const QSize device(int(std::ceil(size.width() * ratio)), int(std::ceil(size.height() * ratio)));
    QImage picture(device, QImage::Format_RGB32);
    picture.fill(Glass::kGround);
    QPainter painter(&picture);
    DrawUnlitCells(painter, size, ratio, glyphs);
    DrawEdge(painter, device, ratio);
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return picture;
}

}  // namespace fenrik
