#include "options/LinkLabel.h"

#include <QMouseEvent>
#include <QShortcut>

namespace fenrik {

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::Link);
    setCursor(Qt::PointingHandCursor);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void LinkLabel::SetKey(const QKeySequence& key, const QString& what)
{
    setToolTip(QStringLiteral("%1 (%2)").arg(what, key.toString(QKeySequence::NativeText)));
    connect(new QShortcut(key, this), &QShortcut::activated, this, &LinkLabel::Clicked);
}

void LinkLabel::mousePressEvent(QMouseEvent* event)
{
    event->accept();  // or the window under it would take the click
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT Clicked();
}

}  // namespace fenrik
