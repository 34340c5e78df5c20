#include "shared/ErrorReporter.h"

#include "platform/Error.h"

#include <new>

namespace fenrik {

namespace {

// The numbers of what is no Error.
constexpr int kOutOfMemory = 7;
constexpr int kInvalidCall = 5;

}  // namespace

void ReportCurrentException(ErrorReporter& reporter, const char* where)
{
    const QString place = QString::fromLatin1(where);
    try {
        throw;
    } catch (const Error& error) {
        reporter.ShowError(error.Number(), error.Description(), place);
    } catch (const std::bad_alloc&) {
        reporter.ShowError(kOutOfMemory, QStringLiteral("Out of memory"), place);
    } catch (const std::exception& error) {
        reporter.ShowError(kInvalidCall, QString::fromLocal8Bit(error.what()), place);
    }
}

bool Guarded(ErrorReporter& reporter, const char* where, const std::function<void()>& body)
{
    try {
        body();
        return true;
    } catch (const std::exception&) {
        ReportCurrentException(reporter, where);
        return false;
    }
}

}  // namespace fenrik
