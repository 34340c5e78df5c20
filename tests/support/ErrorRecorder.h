#pragma once

#include "shared/ErrorReporter.h"

#include <ostream>
#include <vector>

namespace fenrik {

/// Keeps what was reported instead of showing it.
class ErrorRecorder : public ErrorReporter {
public:
    struct Report {
        int number;
        QString description;
        QString where;
    };

    void ShowError(int number, const QString& description, const QString& where, const QString&) override
    {
        reports.push_back({number, description, where});
    }

    std::vector<Report> reports;
};

}  // namespace fenrik
