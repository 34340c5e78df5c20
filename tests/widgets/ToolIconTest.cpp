#include "widgets/ToolIcon.h"

#include "support/Printers.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <gmock/gmock.h>

namespace fenrik {
namespace {

constexpr QSize kSize(24, 24);

QImage On(QRgb ground, QIcon::Mode mode)
{
    QImage picture(kSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(ground);
    QPainter painter(&picture);
    ToolIcon(QStringLiteral("Connect")).paint(&painter, QRect(QPoint(), kSize), Qt::AlignCenter, mode);
    return picture;
}

/// The strongest difference of brightness between the picture and its ground.
int Contrast(QRgb ground, QIcon::Mode mode)
{
    const QImage picture = On(ground, mode);
    int most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            most = std::max(most, std::abs(qGray(picture.pixel(x, y)) - qGray(ground)));
    }
    return most;
}

TEST(ToolIcon, IsTheFilesPicture)
{
    const QIcon plain(QStringLiteral(":/icons/Connect.png"));
    EXPECT_EQ(ToolIcon(QStringLiteral("Connect")).pixmap(kSize).toImage(), plain.pixmap(kSize).toImage());
    EXPECT_EQ(ToolIcon(QStringLiteral("Connect")).pixmap(kSize, 2.0).toImage(), plain.pixmap(kSize, 2.0).toImage());
}

TEST(ToolIcon, IsFaintOnAnyGroundWhereItIsDisabled)
{
    for (const QRgb ground : {qRgb(255, 255, 255), qRgb(40, 40, 44)}) {
        EXPECT_GT(Contrast(ground, QIcon::Disabled), 5);
        EXPECT_LT(Contrast(ground, QIcon::Disabled), Contrast(ground, QIcon::Normal) / 2);
    }
}

}  // namespace
}  // namespace fenrik
