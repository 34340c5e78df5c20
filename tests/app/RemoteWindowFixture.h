#pragma once

#include "WindowFixture.h"
#include "platform/RegistryStore.h"
#include "remote/FakeRelay.h"
#include "remote/MRegistry.h"
#include "remote/PipeSettings.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"

#include <QLabel>
#include <QListWidget>

namespace fenrik {

/// The whole program with a profile for a relay that answers as the test says: this tool is user 7, Bob is user 8.
class RemoteWindowTest : public WindowTest {
protected:
    RemoteWindowTest()
    {
        relay.Behave({{8, "127.0.0.1", "Bob", " "}});
        QObject::connect(&mWatch, &QTimer::timeout, &mWatch, [this] { Look(); });
        mWatch.start(1);
    }

    /// Starts the program with remote diagnostics as its connection method, and a profile unless that is not wanted.
    bool StartRemote(bool withProfile = true)
    {
        if (withProfile)
            StoreProfile();
        return Start("ConnectionType=3\nRDEnable=True\nRDRecentProfileKey={ANN}\n");
    }

    void StoreProfile()
    {
        RegistryStore store(dir.filePath("config/registry.ini"));
        ErrorRecorder errors;
        BoxRecorder boxes;
        const FakeClock clock;
        MRegistry registry(store, errors);
        (void)PipeSettings(registry, boxes, clock)
            .SaveProfiles({{"Ann", "ann-id", "127.0.0.1", relay.Port(), "{ANN}"}});
        ASSERT_TRUE(boxes.boxes.empty() && errors.reports.empty());
    }

    void StartPiped()
    {
        ASSERT_TRUE(StartRemote());
        Click("Connect");
        ASSERT_EQ(Status(), "Piped");
    }

    void StartGranted()
    {
        StartPiped();
        Answer(true);
        ASSERT_TRUE(Until([this] { return Msg() == "Bob has granted access to remote network"; }));
    }

    void Answer(bool granted) { relay.Send(frameBussAccessReply, PipeAccessReply{granted, "Bob's answer"}.Encode()); }
    void BreakPipe() { relay.Send(framePipeBroken, PipeNotice{8, "Bob", "gone"}.Encode()); }
    void SendFrame(const Frame& frame)
    {
        const auto bytes = frame.Encode();
        relay.Send(frameNetworkMessage, std::string(bytes.begin(), bytes.end()));
    }

    /// Has the relay answer what the tool sends into the pipe as a vehicle with nodes would.
    void AttachNodes()
    {
        relay.On(frameNetworkMessage, [this](const std::string& body) {
            Frame::Bytes bytes{};
            std::copy_n(body.begin(), bytes.size(), bytes.begin());
            const Frame frame = Frame::Decode(bytes).value();
            if (frame.command == 901)
                SendFrame({902, false, false, frame.data});
            else if (frame.command == 905)
                SendFrame({903, frame.state, false, frame.data});
            else if (frame.command == 979)
                SendFrame({979, false, false, 4});
            else if (frame.command == 921 && frame.extended)
                SendFrame({903, true, true, 0});
            else
                SendFrame({950, false, false, 0});  // what views ask of the mounted node
        });
    }

    /// The dialog of that name, or nothing if it was never made.
    [[nodiscard]] QDialog* Dialog(const char* name) { return Window().findChild<QDialog*>(name); }
    [[nodiscard]] bool IsShown(const char* name) { return Dialog(name) && Dialog(name)->isVisible(); }

    /// What is done in the users window when connecting has opened it; the first user is chosen if nothing else is
    /// said.
    std::function<void(QDialog&)> onUsers = [](QDialog& users) {
        users.findChild<QListWidget*>("lstUsers")->setCurrentRow(0);
        users.findChild<QPushButton*>("cmdConnect")->click();
    };
    std::function<void()> onTimedMessage = [] {};  ///< while it is open
    QStringList timedMessages;
    FakeRelay relay;

private:
    void Look()
    {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog && dialog->objectName() == "frmPipeUsersDialog") {
            onUsers(*dialog);
        } else if (dialog && dialog->objectName() == "frmRDTimedMessage" && dialog->isVisible()) {
            timedMessages.append(dialog->findChild<QLabel*>("lblInformation")->text());
            onTimedMessage();
            QTest::mouseClick(dialog, Qt::LeftButton);
        }
    }

    QTimer mWatch;
};

}  // namespace fenrik
