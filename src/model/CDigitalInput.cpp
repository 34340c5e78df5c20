#include "model/CDigitalInput.h"

#include "model/CNode.h"
#include "model/NodeTypes.h"

namespace fenrik {

void CDigitalInput::Init(CNode& node, std::int16_t number)
{
    *this = CDigitalInput();
    mParent = &node;
    mNumber = number;
    mName = QStringLiteral("Input %1").arg(number);
    mPin = NodeTypes::InputPin(node.typeID(), number);
}

}  // namespace fenrik
