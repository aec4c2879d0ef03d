#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/result.h"

// Labels and the names that files have for them: any text to a name and back, without two labels
// ever sharing one. They are types of their own, so that neither is taken for the other.
namespace varnhold::services {

// As a property list has it: any text.
struct Label {
    std::string text;

    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the compiler's own
    auto operator<=>(const Label&) const = default;
    bool operator==(std::string_view other) const { return text == other; }
};

// Letters, digits, "-", "_" and inner dots stand for themselves, every other byte for "%" and two
// hex digits. There is none but of a label.
class JobName final {
public:
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] Label label() const;

    // NOLINTNEXTLINE(modernize-use-nullptr): as above
    auto operator<=>(const JobName&) const = default;

private:
    friend Result<JobName> nameOfLabel(const Label& label);
    explicit JobName(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

// Refuses an empty label, one with control characters or that isn't UTF-8, which could forge rows
// of a listing or spoil it, and one whose name would be too long.
[[nodiscard]] Result<JobName> nameOfLabel(const Label& label);

// None for a text that is no label's name.
[[nodiscard]] std::optional<JobName> jobNamed(std::string_view text);
[[nodiscard]] std::optional<Label> labelOfName(std::string_view text);

} // namespace varnhold::services
