#include "support/temporary_home.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace varnhold::testing {

namespace fs = std::filesystem;

TemporaryHome::TemporaryHome() {
    std::string pattern = (fs::temp_directory_path() / "varnhold-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder can be made");
    }
    path_ = pattern;
}

TemporaryHome::~TemporaryHome() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryHome::at(std::string_view relative) const {
    return path_ + "/" + std::string(relative);
}

void TemporaryHome::write(const std::string& path, std::string_view content) const {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

void TemporaryHome::makeFolder(const std::string& path) const {
    fs::create_directories(path);
}

std::string TemporaryHome::read(const std::string& path) const {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace varnhold::testing
