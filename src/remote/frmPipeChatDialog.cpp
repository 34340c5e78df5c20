#include "remote/frmPipeChatDialog.h"

#include "platform/Boxes.h"
#include "shared/Clock.h"
#include "shared/ErrorReporter.h"

#include "ui_frmPipeChatDialog.h"

#include <QIcon>
#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kDotInterval = 750;  // milliseconds
constexpr int kStatusMargin = 2;   // pixels by which the status is wider than its text
const char* const kAllDots = " . . .";
constexpr int kDotsToDrop = 4;

constexpr QRgb kNotGranted = 0xFFFF8080;
constexpr QRgb kGranted = 0xFF00C000;

struct Status {
    const char* word;  // also the icon's name
    const char* before;
    const char* after;  // after the name of the other user; nothing: the name isn't told
    QRgb background;    // 0: that of a button
};

constexpr Status kUnPiped{"UnPiped", " No remote user is currently connected.", nullptr, 0};
constexpr Status kWaiting{"Waiting", " Waiting for ", " to accept the connection . . .", kNotGranted};
constexpr Status kDenied{"Denied", " ", " has denied access to Remote Network.", kNotGranted};
constexpr Status kAccess{"Granted", " ", " has granted access to Remote Network.", kGranted};

const Status& StatusOf(std::int32_t state)
{
    if (state < RemoteStates::kWaiting)
        return kUnPiped;
    return state == RemoteStates::kWaiting ? kWaiting : state == RemoteStates::kDenied ? kDenied : kAccess;
}

QPalette PaletteOf(const Status& status)
{
    QPalette palette;
    palette.setColor(QPalette::Window, status.background ? QColor(status.background) : palette.color(QPalette::Button));
    palette.setColor(QPalette::WindowText, status.background ? QColor(Qt::black) : palette.color(QPalette::ButtonText));
    return palette;
}

/// "Long Time" without the zone, which the locale's own long form has at its end.
QString LongTime(Moment moment)
{
    const QLocale locale;
    const QString format = locale.timeFormat(QLocale::LongFormat).remove(QLatin1Char('t')).trimmed();
    return locale.toString(moment.DateTime().time(), format);
}

}  // namespace

frmPipeChatDialog::frmPipeChatDialog(RemoteHost& host, const Clock& clock, Boxes& boxes, ErrorReporter& errors,
                                     QWidget* parent)
    : QDialog(parent), mHost(host), mClock(clock), mBoxes(boxes), mErrors(errors),
      mUi(std::make_unique<Ui::frmPipeChatDialog>()), tmrWaitProgress(new QTimer(this))
{
    mUi->setupUi(this);
    tmrWaitProgress->setObjectName(QStringLiteral("tmrWaitProgress"));
    tmrWaitProgress->setInterval(kDotInterval);
    SetUpActions();
    setState(mHost.RemoteState());
    mUi->txtSend->setFocus();
}

frmPipeChatDialog::~frmPipeChatDialog() = default;

void frmPipeChatDialog::SetUpActions()
{
    mUi->txtMessages->installEventFilter(this);
    connect(tmrWaitProgress, &QTimer::timeout, this, &frmPipeChatDialog::ShowProgress);
    connect(mUi->cmdSend, &QPushButton::clicked, this, &frmPipeChatDialog::Send);
    connect(mUi->cmdClear, &QPushButton::clicked, this, &frmPipeChatDialog::ClearHistory);
}

void frmPipeChatDialog::SetRemoteClient(const std::optional<CUser>& user)
{
    mRemoteClient = user;
    setWindowTitle(user ? QStringLiteral("Connected to ") + user->UserName : QStringLiteral("Not Connected"));
}

void frmPipeChatDialog::SubmitChatMessage(const QString& sMessage, const QString& UserName)
{
    const QString message = sMessage.section(QChar(u'\0'), 0, 0).trimmed();
    const QString head = QStringLiteral("[%1: %2]").arg(UserName.trimmed(), LongTime(mClock.Now()));
    const bool isFirst = mUi->txtMessages->document()->isEmpty();
    QTextCursor end(mUi->txtMessages->document());
    end.movePosition(QTextCursor::End);
    end.insertText((isFirst ? QString() : QStringLiteral("\n\n")) + head + QLatin1Char('\n') + message);
    show();
    QScrollBar* bar = mUi->txtMessages->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void frmPipeChatDialog::ClearHistory()
{
    mUi->txtMessages->clear();
}

void frmPipeChatDialog::setState(std::int32_t state)
{
    Guarded(mErrors, "frmPipeChatDialog.setState", [this, state] { ShowState(state); });
}

void frmPipeChatDialog::ShowState(std::int32_t state)
{
    const Status& status = StatusOf(state);
    const QString name = mRemoteClient ? mRemoteClient->UserName : QStringLiteral("User");
    mUi->cmdSend->setEnabled(state >= RemoteStates::kWaiting);
    setWindowIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(status.word))));
    if (state == RemoteStates::kWaiting)
        tmrWaitProgress->start();
    else
        tmrWaitProgress->stop();
    mUi->lblStatus->setPalette(PaletteOf(status));
    ShowStatus(QLatin1String(status.before) + (status.after ? name + QLatin1String(status.after) : QString()));
}

void frmPipeChatDialog::ShowStatus(const QString& text)
{
    mUi->lblStatus->setText(text);
    LayOutStatus();
}

void frmPipeChatDialog::LayOutStatus()
{
    mUi->lblStatus->setFixedWidth(mUi->lblStatus->fontMetrics().horizontalAdvance(mUi->lblStatus->text()) +
                                  kStatusMargin);
}

void frmPipeChatDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        LayOutStatus();
}

void frmPipeChatDialog::ShowProgress()
{
    const QString text = mUi->lblStatus->text();
    ShowStatus(text.endsWith(QLatin1String(kAllDots)) ? text.chopped(kDotsToDrop) : text + QStringLiteral(" ."));
}

void frmPipeChatDialog::Send()
{
    const QString text = mUi->txtSend->text().trimmed();
    if (text.isEmpty())
        return;
    if (!mRemoteClient) {
        mBoxes.MsgBox(QStringLiteral("No remote user is currently connected."));
        return;
    }
    mHost.sendChatMessage(text);
    SubmitChatMessage(text, mLocalClient ? mLocalClient->UserName : QString());
    mUi->txtSend->clear();
}

/// The history swallows what is typed into it, Enter and Escape included. Keys that only move, copy or leave go on.
bool frmPipeChatDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != mUi->txtMessages || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const bool leaves = key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab;
    const bool copies = key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll);
    return !key->text().isEmpty() && !leaves && !copies;
}

}  // namespace fenrik
