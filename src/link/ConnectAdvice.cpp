#include "link/ConnectAdvice.h"

#include <QStringList>

namespace fenrik::ConnectAdvice {

namespace {

// The group's name and the command are those of Debian and its relatives.
QString Permission()
{
    return QStringLiteral("Permission: your user must be in the group of the serial ports (in a terminal: sudo adduser "
                          "YOUR-NAME dialout; then log out and in again), or the udev rule 70-fenrik-transceiver.rules "
                          "must be installed, which gives a USB transceiver to whoever sits at the computer; then plug "
                          "it in again.");
}

QString Join(const QStringList& lines)
{
    return QStringLiteral("\n\n") + lines.join(QStringLiteral("\n\n"));
}

}  // namespace

QString NoTransceiver()
{
    return Join(
        {QStringLiteral("Cables: look at the plugs at the computer, at both ends of the transceiver, and at the "
                        "vehicle's diagnostic connector."),
         QStringLiteral("Power: switch the vehicle's battery switch and ignition on; a transceiver with power "
                        "shows a light."),
         QStringLiteral("Port: \"Network Options\" (Ctrl+N) must name the port that the transceiver is on."),
         Permission()});
}

QString PortInUse()
{
    return Join({QStringLiteral("Another program may have the port: a second copy of this one, a terminal program, or "
                                "the system's modem manager. If none has, you may not be allowed to use it."),
                 Permission()});
}

QString NoPort()
{
    return Join({QStringLiteral("Cables: plug the transceiver, or the serial adapter that it hangs on, into the "
                                "computer."),
                 QStringLiteral("Port: choose one of those that \"Network Options\" (Ctrl+N) lists.")});
}

}  // namespace fenrik::ConnectAdvice
