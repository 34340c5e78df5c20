#include "widgets/ToolIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

namespace fenrik {

namespace {

constexpr double kFaded = 0.35;

class ToolIconEngine : public QIconEngine {
public:
    explicit ToolIconEngine(QString file) : mFile(std::move(file)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        const QPixmap plain = Icon().pixmap(size / scale, scale);
        if (mode != QIcon::Disabled)
            return plain;
        QPixmap faded(plain.size());
        faded.setDevicePixelRatio(plain.devicePixelRatio());
        faded.fill(Qt::transparent);
        QPainter painter(&faded);
        painter.setOpacity(kFaded);
        painter.drawPixmap(0, 0, plain);
        return faded;
    }

    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    bool isNull() override { return false; }
    QIconEngine* clone() const override { return new ToolIconEngine(*this); }

private:
    const QIcon& Icon()
    {
        if (mIcon.isNull())
            mIcon = QIcon(mFile);
        return mIcon;
    }

    QString mFile;
    QIcon mIcon;
};

}  // namespace

QIcon ToolIcon(const QString& name)
{
    return QIcon(new ToolIconEngine(QStringLiteral(":/icons/%1.png").arg(name)));
}

}  // namespace fenrik
