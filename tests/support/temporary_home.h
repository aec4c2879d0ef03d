#pragma once

#include <string>
#include <string_view>

namespace varnhold::testing {

// A home folder of its own for one test, removed with all in it at the end.
class TemporaryHome final {
public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string at(std::string_view relative) const;

    // Makes the parents too; paths may be absolute, below the home.
    void write(const std::string& path, std::string_view content) const;
    void makeFolder(const std::string& path) const;
    [[nodiscard]] std::string read(const std::string& path) const;

private:
    std::string path_;
};

} // namespace varnhold::testing
