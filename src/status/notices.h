#pragma once

#include <string>
#include <vector>

// Notices of models that the daemons have installed, handed over in a file and shown once.
namespace varnhold {

struct ModelNotice {
    std::string message;
    bool inChain = false; // the new model affects a chain in use

    bool operator==(const ModelNotice&) const = default;
};

// Reads the file and deletes it, if it holds a list of at least one object; a file that can't be
// parsed, or holds an empty list, stays, since its writer may not be done. Members that are missing
// or of another type read as empty and false.
[[nodiscard]] std::vector<ModelNotice> takeModelNotices(const std::string& path);

// How it is shown, in points.
namespace noticeStyle {
inline constexpr int padding = 16;
inline constexpr int spacing = 12;
inline constexpr int headerSpacing = 9;
inline constexpr int lineSpacing = 2; // a message and its warning
inline constexpr int iconSize = 26;
inline constexpr int titleSize = 14; // of letters, as the two below
inline constexpr int messageSize = 12;
inline constexpr int warningSize = 11;
} // namespace noticeStyle

// Everything that the popover says, and its size in points. Of very many notices it names the first
// and counts the rest, and of a very long message it has the beginning: all of it would take longer
// to lay out than anybody reads.
struct NoticePanel {
    std::string title;
    std::vector<ModelNotice> notices;
    std::string rest; // under the last notice; empty if all are named
    int width = 0;
    int height = 0;
};

[[nodiscard]] NoticePanel noticePanel(std::vector<ModelNotice> notices);

// Under each notice that affects a chain in use.
inline constexpr const char* chainWarning = "⚠️ This affects a chain you use — re-check it.";

} // namespace varnhold
