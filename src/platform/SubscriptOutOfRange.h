#pragma once

#include "platform/Error.h"

namespace fenrik {

/// Error 9: a number outside of what it counts.
class SubscriptOutOfRange : public Error {
public:
    SubscriptOutOfRange() : Error(ErrorNumber::kSubscriptOutOfRange, QStringLiteral("Subscript out of range")) {}
};

}  // namespace fenrik
