#pragma once

#include <QProcess>
#include <QProcessEnvironment>

#include <string>

namespace fenrik {

/// A virtual display for programs that shall have real windows, and a hand on its keyboard.
class Display {
public:
    ~Display();

    /// The program that is needed for this and not installed; empty if all are there.
    [[nodiscard]] static std::string Missing();

    /// Fails the test if the display does not start.
    void Start();

    /// The environment of a program that shall use the display.
    [[nodiscard]] QProcessEnvironment On(QProcessEnvironment environment) const;

    /// The number of a window on the screen of that title which is no splash window or box; empty if there is none.
    [[nodiscard]] QString LargeWindow(const QString& title) const;

    /// Presses keys ("ctrl+k") in a window.
    void Press(const QString& window, const QString& keys) const;

private:
    [[nodiscard]] QString Do(const QStringList& arguments) const;

    QProcess mServer;
    QString mName;
};

}  // namespace fenrik
