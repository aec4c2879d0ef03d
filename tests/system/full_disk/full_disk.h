#pragma once

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace varnhold::testing {

// Takes all the room there is on a file system but for a little, until it is given back.
class Filler {
public:
    explicit Filler(std::string path) : path_(std::move(path)) {}
    ~Filler() { giveBack(); }
    Filler(const Filler&) = delete;
    Filler& operator=(const Filler&) = delete;

    // Leaves room for about `bytes`; false if there was less to begin with.
    bool leave(std::uint64_t bytes) {
        giveBack();
        const int file = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        off_t size = 0;
        for (std::size_t piece = 65536; piece > 0;) {
            const std::string zeros(piece, '\0');
            const ssize_t done = ::write(file, zeros.data(), zeros.size());
            if (done > 0) {
                size += done;
            } else {
                piece /= 2;
            }
        }
        const auto wanted = static_cast<off_t>(bytes);
        const bool fits = size >= wanted && ::ftruncate(file, size - wanted) == 0;
        ::close(file);
        return fits;
    }

    void giveBack() const { ::unlink(path_.c_str()); }

private:
    std::string path_;
};

} // namespace varnhold::testing
