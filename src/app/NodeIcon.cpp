#include "app/NodeIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace fenrik {

namespace {

const QColor kAlive(0x2E, 0x8B, 0x57);
const QColor kMounted(0xC7, 0x7D, 0x11);

class NodeIconEngine : public QIconEngine {
public:
    NodeIconEngine(const QString& number, bool mounted) : mNumber(number), mMounted(mounted) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const bool disabled = mode == QIcon::Disabled;
        const QColor frame = disabled ? QGuiApplication::palette().color(QPalette::Disabled, QPalette::WindowText)
                                      : (mMounted ? kMounted : kAlive);
        const bool filled = !disabled && (mMounted || state == QIcon::On);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const double edge = rect.height() / 12.0;
        const QRectF box = QRectF(rect).adjusted(edge, edge, -edge, -edge);
        QColor pen = frame;
        pen.setAlphaF(disabled || mNumber.isEmpty() ? 0.35 : 1.0);
        painter->setPen(QPen(pen, edge));
        painter->setBrush(filled ? QBrush(frame) : QBrush(Qt::NoBrush));
        painter->drawRoundedRect(box, edge * 2, edge * 2);
        QFont font = QGuiApplication::font();
        font.setPixelSize(int(rect.height() * 0.5));
        font.setBold(true);
        painter->setFont(font);
        painter->setPen(filled ? QColor(Qt::white)
                               : (disabled ? pen : QGuiApplication::palette().color(QPalette::WindowText)));
        painter->drawText(box, Qt::AlignCenter, mNumber);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new NodeIconEngine(*this); }

private:
    QString mNumber;
    bool mMounted;
};

}  // namespace

QIcon NodeIcon(const QString& iconKey)
{
    const QString prefix = QStringLiteral("Node");
    if (!iconKey.startsWith(prefix))
        return QIcon(new NodeIconEngine(QString(), false));
    QString number = iconKey.mid(prefix.size());
    const bool mounted = number.endsWith(QLatin1Char('M'));
    if (mounted)
        number.chop(1);
    return QIcon(new NodeIconEngine(number, mounted));
}

}  // namespace fenrik
