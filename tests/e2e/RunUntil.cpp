#include "e2e/RunUntil.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace fenrik {

namespace {

constexpr int kLookMs = 5;

}  // namespace

bool RunUntil(const std::function<bool()>& holds, int milliseconds)
{
    if (holds())
        return true;
    QEventLoop loop;
    const QDeadlineTimer deadline(milliseconds);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (holds())
            loop.exit(1);
        else if (deadline.hasExpired())
            loop.exit(0);
    });
    look.start(kLookMs);
    return loop.exec() == 1;
}

}  // namespace fenrik
