#pragma once

#include <QString>

namespace fenrik {

/// What a download needs from the window that shows it. Called on the user-interface thread, between exchanges.
class DownloadHost {
public:
    virtual ~DownloadHost() = default;

    /// Mounts or unmounts node `number`. What came of it is read from the system.
    virtual void MountNode(int number) = 0;
    virtual void UnmountNode(int number) = 0;

    /// The progress bar: `total` steps are to come; `step` of them are done; it goes away. A node can need more
    /// steps than were announced, and fewer. pbProgressEnd may come without pbProgressInit.
    virtual void pbProgressInit(int total) = 0;
    virtual void pbProgressUpdate(int step) = 0;
    virtual void pbProgressEnd() = 0;

    /// Puts `text` on the status line.
    virtual void ShowStatus(const QString& text) = 0;

    /// True shows the busy cursor, false the one before it. Calls come in pairs.
    virtual void ShowBusyCursor(bool busy) = 0;

    /// The user broke the download off. Cleared at the start of each download; the Escape key raises it.
    [[nodiscard]] virtual bool DidCancel() const = 0;
    virtual void setDidCancel(bool cancel) = 0;
};

}  // namespace fenrik
