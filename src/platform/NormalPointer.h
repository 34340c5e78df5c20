#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace fenrik {

/// An arrow for as long as the object lives, also inside an hourglass section: a box waits for the user, and not the
/// user for it.
class NormalPointer {
public:
    NormalPointer() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~NormalPointer() { QGuiApplication::restoreOverrideCursor(); }
    NormalPointer(const NormalPointer&) = delete;
    NormalPointer& operator=(const NormalPointer&) = delete;
};

}  // namespace fenrik
