#pragma once

#include <unistd.h>
#include <utility>

namespace fenrik {

/// Owns a file descriptor.
class Handle {
public:
    Handle() = default;
    explicit Handle(int handle) : mHandle(handle) {}
    ~Handle() { Close(); }
    Handle(Handle&& other) noexcept : mHandle(std::exchange(other.mHandle, -1)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(mHandle, other.mHandle);
        return *this;
    }

    [[nodiscard]] int Get() const { return mHandle; }  ///< -1 if none
    [[nodiscard]] bool Valid() const { return mHandle >= 0; }

    void Close()
    {
        if (mHandle >= 0)
            ::close(mHandle);
        mHandle = -1;
    }

private:
    int mHandle = -1;
};

}  // namespace fenrik
