#include "remote/frmRDTimedMessage.h"

#include "ui_frmRDTimedMessage.h"

#include <QHideEvent>
#include <QMouseEvent>
#include <QTimer>

namespace fenrik {

frmRDTimedMessage::frmRDTimedMessage(QWidget* parent)
    : QDialog(parent), mUi(std::make_unique<Ui::frmRDTimedMessage>()), tmAutoClose(new QTimer(this))
{
    mUi->setupUi(this);
    tmAutoClose->setObjectName(QStringLiteral("tmAutoClose"));
    tmAutoClose->setInterval(kUsualTimeout);
    tmAutoClose->setSingleShot(true);
    connect(tmAutoClose, &QTimer::timeout, this, &QDialog::accept);
}

frmRDTimedMessage::~frmRDTimedMessage() = default;

void frmRDTimedMessage::doNonModalDialog(const QString& msg, int timeout)
{
    Begin(msg, timeout);
    show();
}

void frmRDTimedMessage::doModalDialog(const QString& msg, int timeout)
{
    Begin(msg, timeout);
    exec();
}

void frmRDTimedMessage::Begin(const QString& msg, int timeout)
{
    mUi->lblInformation->setText(msg);
    tmAutoClose->start(timeout);
}

/// The label passes its clicks on to the window.
void frmRDTimedMessage::mousePressEvent(QMouseEvent*)
{
    accept();
}

void frmRDTimedMessage::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    // A minimised window is not gone.
    if (!event->spontaneous())
        tmAutoClose->stop();
}

}  // namespace fenrik
