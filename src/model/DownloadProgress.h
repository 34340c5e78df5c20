#pragma once

#include <QString>

namespace fenrik {

struct NodeLink;

/// Thrown inside a download to leave its road before the end; never leaves NodeDownload.
struct DownloadEnded {
    enum class Why {
        Cancelled,    ///< by the user
        LinkFailed,   ///< the node does not answer, or the port went away
        FlashBroken,  ///< the variable flash structure can't be followed
    };
    Why why;
};

/// What a download shows while it runs, and how the user breaks it off. Without a window nothing is shown and
/// nobody breaks it off.
class DownloadProgress {
public:
    explicit DownloadProgress(const NodeLink* link) : mLink(link) {}

    void ClearCancel();
    void Begin(int total);
    /// `steps` are done; ends the download if it was broken off meanwhile.
    void Step(int steps);
    void End();
    void Status(const QString& text);
    void ShowBusyCursor(bool busy);

    /// Ends the download if it was broken off, also by the end of the program.
    void ThrowIfCancelled() const;

    /// The program is about to end: no box and no text any more.
    [[nodiscard]] bool Closing() const;

private:
    const NodeLink* mLink;
};

}  // namespace fenrik
