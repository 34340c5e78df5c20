#pragma once

#include "remote/RemoteHost.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/Printers.h"

#include <QDialog>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace fenrik {

/// A connection that keeps what is sent.
class RemoteHostRecorder : public RemoteHost {
public:
    [[nodiscard]] std::int32_t RemoteState() const override { return state; }
    [[nodiscard]] bool IsRemotePiped() const override { return state >= RemoteStates::kWaiting; }
    void sendChatMessage(const QString& text) override { sent.append("chat " + text); }
    void sendEchoServer(const QString& text) override { sent.append("server " + text); }
    void sendEchoClient(const QString& text) override { sent.append("client " + text); }

    std::int32_t state = 0;
    QStringList sent;
};

/// Works a window as a user does.
class RemoteWindowTest : public testing::Test {
protected:
    static void Open(QDialog& window)
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    template <typename Child = QWidget>
    static Child& Find(const QDialog& window, const char* name)
    {
        return *window.findChild<Child*>(QLatin1String(name));
    }

    static void Click(const QDialog& window, const char* name)
    {
        QTest::mouseClick(&Find(window, name), Qt::LeftButton);
    }

    static void Type(const QDialog& window, const char* name, const QString& text)
    {
        Find(window, name).setFocus();
        QTest::keyClicks(&Find(window, name), text);
    }

    static void Fire(const QDialog& window, const char* timer)
    {
        QMetaObject::invokeMethod(&Find<QTimer>(window, timer), "timeout", Qt::DirectConnection);
    }

    RemoteHostRecorder host;
    FakeClock clock;
    BoxRecorder boxes;
    ErrorRecorder errors;
};

}  // namespace fenrik
