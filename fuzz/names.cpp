// Any label to the name of a file and of a unit, and back: the same label, or refused by both. And
// any name that stands in a folder or a manager's list: no label's, or the one that it came from.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "jobs/label_name.h"
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
    const Label label{std::string(text)};
    if (const auto name = nameOfLabel(label)) {
        expect(name->label() == label.text, "the file's name leads to another label", text);
        expect(name->text().find('/') == std::string::npos && name->text().front() != '.',
               "no plain name", name->text());
        expect(jobOfUnit(unitOfJob(*name, size % 3)) == *name, "the unit leads to another job",
               text);
        static_cast<void>(patternOfGenerations(*name));
    }
    if (const auto name = jobNamed(text)) {
        expect(name->text() == text, "a name that reads as another", text);
        expect(nameOfLabel(name->label()) == *name, "two names of one label", text);
    }
    static_cast<void>(jobOfUnit(text));
    return 0;
}
