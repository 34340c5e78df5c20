#include "link/PortErrors.h"

#include "link/ConnectAdvice.h"
#include "platform/Boxes.h"
#include "platform/Error.h"

namespace fenrik {

bool AskAfterPortError(Boxes& boxes, int commPort, const Error& error)
{
    switch (error.Number()) {
    case ErrorNumber::kPortAlreadyOpen:
        return boxes.MsgBox(QStringLiteral("Comm Port %1 already open.\n"
                                           "Close the port and click Retry to continue, "
                                           "or Cancel to abort operation.")
                                    .arg(commPort) +
                                ConnectAdvice::PortInUse(),
                            QMessageBox::Warning, QMessageBox::Retry | QMessageBox::Cancel) == QMessageBox::Retry;
    case ErrorNumber::kPortNotFound:
        boxes.MsgBox(QStringLiteral("Comm Port %1 does not exist.").arg(commPort) + ConnectAdvice::NoPort(),
                     QMessageBox::Warning);
        return false;
    case ErrorNumber::kSetCommState:
        boxes.MsgBox(QStringLiteral("Unable to set Comm State on Comm Port %1 .  Please retry.  ").arg(commPort),
                     QMessageBox::Warning);
        return false;
    default:
        throw error;
    }
}

}  // namespace fenrik
