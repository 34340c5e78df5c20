// A genuine database: whatever the bytes, the reader makes a copy or says why not. The name at the front decides
// nothing here, so that all inputs reach the reader.

#include "platform/Error.h"
#include "platform/JetCopy.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
        const fenrik::JetCopy copy = fenrik::CopyJetFile(bytes, QStringLiteral("fuzzed.dav"));
        if (!copy.connection)
            std::abort();
    } catch (const fenrik::Error& error) {
        if (error.Number() != fenrik::ErrorNumber::kDatabaseBroken)
            std::abort();
    }
    return 0;
}
