#include "link/ConnectAdvice.h"

namespace fenrik::ConnectAdvice {

namespace {

// The box has to fit a small screen with a large font: the whole story is in the manual. The group's name and the
// command are those of Debian and its relatives.
QString Permission()
{
    return QStringLiteral("\nPermission: join the group dialout (sudo adduser YOUR-NAME dialout, then log in again) or "
                          "install the udev rule 70-fenrik-transceiver.rules; the manual (F1) tells how.");
}

}  // namespace

QString NoTransceiver()
{
    return QStringLiteral("\n\nCables: check the plugs at computer, transceiver and vehicle."
                          "\nPower: switch on the vehicle's battery and ignition."
                          "\nPort: choose the transceiver's in \"Network Options\" (Ctrl+N).") +
           Permission();
}

QString PortInUse()
{
    return QStringLiteral("\n\nA second copy of this program, a terminal program or the system's modem manager may "
                          "have it. If none has, you may not be allowed to use it.") +
           Permission();
}

QString NoPort()
{
    return QStringLiteral("\n\nCables: plug the transceiver or its serial adapter into the computer."
                          "\nPort: choose one of those that \"Network Options\" (Ctrl+N) lists.");
}

}  // namespace fenrik::ConnectAdvice
