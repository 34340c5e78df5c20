#pragma once

class QWidget;

namespace fenrik {

/// What the window of the older network asks of the program around it. Called on the UI thread; the dialogs are modal
/// over `parent`.
class LegacyHost {
public:
    virtual ~LegacyHost() = default;

    virtual void OpenNetworkOptions(QWidget& parent) = 0;  ///< "Port"
    virtual void OpenToolOptions(QWidget& parent) = 0;     ///< "Harnwick"
    virtual void OpenAbout(QWidget& parent) = 0;

    /// Writes the settings and ends the program; the last thing that the window does.
    virtual void SaveAndEnd() = 0;
};

}  // namespace fenrik
