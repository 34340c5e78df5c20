#pragma once

#include <QString>

#include <functional>

namespace fenrik {

/// Where every unexpected failure ends: the user is told, and the failure is written to a file.
class ErrorReporter {
public:
    virtual ~ErrorReporter() = default;

    /// `where` names the place, as "MMain:Main". Runs a modal dialog, so timers and ports go on meanwhile.
    /// Never throws.
    virtual void ShowError(int number, const QString& description, const QString& where, const QString& extra = {}) = 0;
};

/// Runs `body`; an Error, or any other exception, goes to `reporter` with the text `where`, and the procedure is
/// over with the state as it stands. True if nothing was thrown.
bool Guarded(ErrorReporter& reporter, const char* where, const std::function<void()>& body);

/// Reports the exception that is being handled, for a catch block that can't afford the call above.
void ReportCurrentException(ErrorReporter& reporter, const char* where);

}  // namespace fenrik
