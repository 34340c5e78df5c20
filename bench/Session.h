#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string_view>

struct xcb_connection_t;

namespace fenrik {

/// A figure that could not be had; what() is the reason.
struct NotMeasured : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Prints one figure as "name,value", the form that bench/run reads.
void PrintFigure(const char* name, double value);

/// The rest of main: runs `measure`. Gives the exit code; a figure that could not be had is told under the name of the
/// program.
[[nodiscard]] int Report(const char* program, void (*measure)());

/// A portable copy of the tool in a folder of its own, with its own settings (COM5), gone with the object.
class Copy {
public:
    Copy();

    /// Replaces settings.ini.
    void WriteSettings(const QByteArray& text) const;

    [[nodiscard]] QString Path(const char* name) const { return mFolder.filePath(QLatin1String(name)); }
    [[nodiscard]] QString Tool() const { return Path("bin/fenrik-diagnostics"); }

    /// Starts a program that uses the copy.
    void Start(QProcess& process, const QString& program, const QStringList& arguments = {}) const;

    /// Frames in all message logs.
    [[nodiscard]] qint64 LoggedFrames() const;

private:
    QTemporaryDir mFolder;
};

/// Sees windows come up on the display.
class DisplayWatch {
public:
    DisplayWatch();
    ~DisplayWatch();
    DisplayWatch(const DisplayWatch&) = delete;
    DisplayWatch& operator=(const DisplayWatch&) = delete;

    /// Waits until a window of the main window's width is mapped; gives its number. Narrower ones are splash windows.
    std::uint32_t NextLargeWindow();

    /// Waits until the window has taken in all that was sent to it since it was mapped: it is painted, and what is
    /// pressed now is answered.
    void WaitUntilReady(std::uint32_t window);

    /// Forgets what was mapped until now.
    void Drain();

private:
    [[nodiscard]] std::uint32_t Atom(std::string_view name);
    void Ping(std::uint32_t window);

    xcb_connection_t* mDisplay;
    std::uint32_t mRoot = 0;
};

/// Processor seconds that a process has used.
[[nodiscard]] double ProcessorSeconds(qint64 processId);

/// The same within that time.
[[nodiscard]] double UsedWhile(QProcess& process, std::chrono::duration<double> time);

/// Presses keys ("ctrl+k") in a window.
void Press(std::uint32_t window, const char* keys);

/// Waits until the simulated vehicle, which was started, can be connected to.
void WaitForVehicle(QProcess& vehicle);

/// Has it carry out a statement.
void Control(QProcess& vehicle, const char* statement);

/// Ends a process and waits for it.
void End(QProcess& process);

}  // namespace fenrik
