// Any label to the name of a file and of a unit, and back: the same label, or refused by both. And
// any name that stands in a folder or a manager's list: no label's, or the one that it came from.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "launchctl/label_name.h"
#include "launchctl/unit_name.h"

namespace {

void expect(bool holds, std::string_view what, std::string_view text) {
    if (!holds) {
        std::cerr << what << ": " << text << "\n";
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace varnhold::services;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto name = nameOfLabel(text)) {
        expect(labelOfName(*name) == text, "the file's name leads to another label", text);
        expect(name->find('/') == std::string::npos && name->front() != '.', "no plain name",
               *name);
    }
    if (const auto unit = unitOfLabel(text, size % 3)) {
        expect(labelOfUnit(*unit) == text, "the unit leads to another label", text);
        expect(nameOfLabel(text).has_value(), "a unit but no file", text);
    }
    if (const auto label = labelOfName(text)) {
        expect(nameOfLabel(*label) == text, "two names of one label", text);
    }
    static_cast<void>(labelOfUnit(text));
    static_cast<void>(patternOfGenerations(text));
    return 0;
}
