#pragma once

#include <QString>

namespace fenrik {

class CSystem;
class MessageListModel;
struct CMessage;
struct Services;

/// The live views that a message passes on its way to the list.
class LiveViews {
public:
    virtual ~LiveViews() = default;
    virtual void UpdateAnalog(int command) = 0;
    virtual void HandlePingResponse(int pingNode, int data) = 0;
    virtual void UpdateLoadShed(int data) = 0;
    virtual void UpdateDiagnostics(const CMessage& message) = 0;
    virtual void LightSync() = 0;
    virtual void RefreshCurrentFrame(bool getNewInfo) = 0;
};

/// The one road of every message that is shown: received, sent with its echo on, or a reply to such a message. Routes
/// it to the live views, writes its line in the message list, and logs it.
class MessageDisplay {
public:
    MessageDisplay(const Services& services, const CSystem& system, MessageListModel& list, LiveViews& views);

    /// Errors go to the error reporter. A message of command 1000 leaves as its sub-command.
    void DisplayMessage(CMessage& message);

private:
    struct Caption {
        QString text;
        QString icon;
    };

    /// True if the message is one of those that only the option "show all" lists.
    [[nodiscard]] bool RouteToViews(const CMessage& message);
    [[nodiscard]] Caption CaptionOf(const CMessage& message) const;
    [[nodiscard]] Caption SpecialCaption(const CMessage& message) const;
    [[nodiscard]] QString IconOf(const CMessage& message) const;
    void Log(const CMessage& message);

    const Services& mServices;
    const CSystem& mSystem;
    MessageListModel& mList;
    LiveViews& mViews;
};

}  // namespace fenrik
