// The byte stream of the line: any bytes at all.

#include "FuzzLink.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fenrik::FuzzLink link({});
    for (const std::uint8_t byte : std::span(data, size))
        link.Handler().ReceiveMsgByte(byte);
    return 0;
}
