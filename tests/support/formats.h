#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace varnhold::testing {

// A file that the program reads into a record, for tests that put all of them to the same trials.
struct Format {
    const char* kind; // also the name of its page and schema in docs/formats
    // Decodes a document and gives what the record is written as.
    Result<std::string> (*recode)(std::string_view text);
    // The same for a file.
    Result<std::string> (*reread)(const std::string& path);
    std::string sample; // a document with every field
    std::vector<std::string> optionalKeys;
};

[[nodiscard]] const std::vector<Format>& formats();
[[nodiscard]] const Format* findFormat(std::string_view kind);

// The kind as part of a test's name.
[[nodiscard]] std::string testName(const Format& format);

} // namespace varnhold::testing
