#include "shared/LoadFailure.h"

#include "platform/Boxes.h"

namespace fenrik {

void TellLoadFailure(Boxes& boxes, const QString& file)
{
    boxes.MsgBox(QStringLiteral("An error occured loading the file <%1>\n"
                                "This program cannot operate with out it and will be shutdown!")
                     .arg(file),
                 QMessageBox::Critical);
}

}  // namespace fenrik
