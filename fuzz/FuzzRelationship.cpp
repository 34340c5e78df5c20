// The bytes of a relationship.

#include "model/COutput.h"
#include "model/Relationship.h"
#include "model/TrimBlanks.h"

#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fenrik::RelationshipReader reader;
    for (const std::uint8_t byte : std::span(data, size)) {
        (void)fenrik::Relationship::OperatorText(byte);
        if (reader.Take(byte))
            break;
    }
    const QByteArray trimmed = fenrik::TrimBlanks(reader.Bytes());
    if (trimmed.startsWith(' ') || trimmed.endsWith(' '))
        std::abort();
    fenrik::COutput output;
    output.setRPN(trimmed);
    if (output.RLevelCount() > trimmed.size())
        std::abort();
    return 0;
}
