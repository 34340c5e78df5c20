#pragma once

#include "simulator/FileHandle.h"
#include "simulator/Fixtures.h"

#include <fcntl.h>
#include <poll.h>
#include <string>
#include <termios.h>

namespace fenrik {

/// The tool's end of the terminal, opened with nothing but the system's calls.
class Device {
public:
    explicit Device(const std::string& path) : mHandle(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}

    [[nodiscard]] bool Open() const { return mHandle.Valid(); }
    void Close() { mHandle.Close(); }

    [[nodiscard]] termios Line() const
    {
        termios line{};
        ::tcgetattr(mHandle.Get(), &line);
        return line;
    }

    [[nodiscard]] bool Write(const ByteList& bytes) const
    {
        return ::write(mHandle.Get(), bytes.data(), bytes.size()) == ssize_t(bytes.size());
    }

    /// The next `count` bytes, or fewer if they don't come within two seconds.
    [[nodiscard]] ByteList Read(std::size_t count, int milliseconds = 2000) const
    {
        ByteList all;
        pollfd handle{mHandle.Get(), POLLIN, 0};
        while (all.size() < count && ::poll(&handle, 1, milliseconds) > 0) {
            ByteList part(count - all.size());
            const auto got = ::read(mHandle.Get(), part.data(), part.size());
            if (got <= 0)
                break;
            all.insert(all.end(), part.begin(), part.begin() + got);
        }
        return all;
    }

    /// True if the other end has gone.
    [[nodiscard]] bool HungUp() const
    {
        pollfd handle{mHandle.Get(), POLLIN, 0};
        return ::poll(&handle, 1, 2000) > 0 && (handle.revents & POLLHUP) != 0;
    }

private:
    FileHandle mHandle;
};

}  // namespace fenrik
