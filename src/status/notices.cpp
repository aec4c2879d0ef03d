#include "status/notices.h"

#include <algorithm>
#include <unistd.h>

#include "base/files.h"
#include "base/json.h"
#include "base/text.h"

namespace varnhold {

namespace {

constexpr int panelWidth = 320;
constexpr int heightPerNotice = 46;
constexpr int heightOfRest = 64;
constexpr std::size_t mostNotices = 100;
constexpr std::size_t longestMessage = 2000; // bytes

ModelNotice noticeFrom(const json::Value& object) {
    ModelNotice notice;
    if (const auto message = object.find("message");
        message != object.end() && message->is_string()) {
        notice.message = message->get<std::string>();
    }
    if (const auto inChain = object.find("in_chain");
        inChain != object.end() && inChain->is_boolean()) {
        notice.inChain = inChain->get<bool>();
    }
    return notice;
}

bool isListOfObjects(const json::Value& value) {
    return value.is_array() && std::all_of(value.begin(), value.end(),
                                           [](const auto& each) { return each.is_object(); });
}

} // namespace

std::vector<ModelNotice> takeModelNotices(const std::string& path) {
    std::vector<ModelNotice> notices;
    if (!files::exists(path)) {
        return notices;
    }
    const Result<json::Value> document = json::parseFile(path);
    if (!document || !isListOfObjects(*document) || document->empty()) {
        return notices;
    }
    ::unlink(path.c_str()); // a file that can't be deleted is shown again at the next look
    for (const json::Value& object : *document) {
        notices.push_back(noticeFrom(object));
    }
    return notices;
}

NoticePanel noticePanel(std::vector<ModelNotice> notices) {
    const int count = static_cast<int>(notices.size());
    std::string rest;
    if (notices.size() > mostNotices) {
        rest = "… and " + std::to_string(notices.size() - mostNotices) + " more";
        notices.resize(mostNotices);
    }
    for (ModelNotice& notice : notices) {
        notice.message = text::beginning(notice.message, longestMessage);
    }
    return {.title = count > 1 ? "New AI models installed" : "New AI model installed",
            .notices = std::move(notices),
            .rest = std::move(rest),
            .width = panelWidth,
            .height = count * heightPerNotice + heightOfRest};
}

} // namespace varnhold
