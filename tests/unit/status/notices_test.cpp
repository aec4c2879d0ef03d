#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "base/files.h"
#include "status/notices.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct NoticeFile {
    TemporaryHome home;
    std::string path = home.at("pending_model_notices.json");

    explicit NoticeFile(const std::string& content) { home.write(path, content); }
    [[nodiscard]] bool isThere() const { return files::exists(path); }
    [[nodiscard]] std::vector<ModelNotice> take() const { return takeModelNotices(path); }
};

TEST(ModelNotices, OfAnEmptyListLeaveTheFileAndShowNothing) {
    const NoticeFile file("[]");
    EXPECT_THAT(file.take(), IsEmpty());
    EXPECT_TRUE(file.isThere());
}

TEST(ModelNotices, AreTakenInOrderAndTheFileIsGone) {
    const NoticeFile file(
        R"([{"message":"one","in_chain":true,"more":{}},{"message":"two","in_chain":false}])");
    EXPECT_THAT(file.take(), ElementsAre(ModelNotice{"one", true}, ModelNotice{"two", false}));
    EXPECT_FALSE(file.isThere());
}

TEST(ModelNotices, OfAFileThatCannotBeDeletedAreShownAgainAtTheNextLook) {
    // A file without a name but its descriptor's, which nobody can delete.
    const int file = ::memfd_create("notices", MFD_CLOEXEC);
    const std::string content = R"([{"message":"again"}])";
    ASSERT_EQ(::write(file, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    for (int look = 0; look < 2; ++look) {
        EXPECT_THAT(takeModelNotices(path), ElementsAre(ModelNotice{"again", false}));
    }
    ::close(file);
}

TEST(ModelNotices, WithoutAMessageStillShowInTheSingular) {
    const NoticeFile file("[{}]");
    const NoticePanel panel = noticePanel(file.take());
    EXPECT_EQ(panel.title, "New AI model installed");
    EXPECT_THAT(panel.notices, ElementsAre(ModelNotice{"", false}));
    EXPECT_EQ(panel.width, 320);
    EXPECT_EQ(panel.height, 110);
}

TEST(ModelNotices, WithMembersOfAnotherTypeReadAsEmptyAndFalse) {
    const NoticeFile file(
        R"([{"message":5,"in_chain":1},{"message":null,"in_chain":"true"},{"in_chain":null}])");
    EXPECT_THAT(file.take(), ElementsAre(ModelNotice{"", false}, ModelNotice{"", false},
                                         ModelNotice{"", false}));
}

TEST(ModelNotices, ThatDoNotParseStayForTheNextLook) {
    for (const char* content :
         {"", "[{\"message\":", "{\"message\":\"m\"}", "[{},1]", "[null]", "7", "\xFF"}) {
        const NoticeFile file(content);
        EXPECT_THAT(file.take(), IsEmpty()) << content;
        EXPECT_TRUE(file.isThere()) << content;
    }
}

TEST(ModelNotices, OfAMissingFileAreNone) {
    EXPECT_THAT(takeModelNotices("/nonexistent/notices.json"), IsEmpty());
}

TEST(ModelNotices, ThatAreTwoMakeAPanelOfTheirHeightInThePlural) {
    const NoticePanel panel = noticePanel({{"one", false}, {"two", true}});
    EXPECT_EQ(panel.title, "New AI models installed");
    EXPECT_EQ(panel.width, 320);
    EXPECT_EQ(panel.height, 156);
    EXPECT_EQ(panel.rest, "");
}

TEST(ModelNotices, OfWhichThereAreVeryManyAreNamedAtFirstAndThenCounted) {
    std::vector<ModelNotice> notices(100'000, ModelNotice{"m", false});
    notices.front().message = "the first";
    const NoticePanel panel = noticePanel(notices);
    ASSERT_EQ(panel.notices.size(), 100);
    EXPECT_EQ(panel.notices.front().message, "the first");
    EXPECT_EQ(panel.rest, "… and 99900 more");
    notices.resize(100);
    EXPECT_EQ(noticePanel(notices).notices.size(), 100);
    EXPECT_EQ(noticePanel(notices).rest, "");
}

TEST(ModelNotices, OfVeryLongMessagesShowTheBeginningUpToAWholeLetter) {
    const std::string whole(2000, 'a');
    std::string umlauts;
    while (umlauts.size() < 5'000'000) {
        umlauts += "ü";
    }
    const NoticePanel panel =
        noticePanel({{whole, false}, {whole + "b", false}, {"a" + umlauts, false}});
    EXPECT_EQ(panel.notices[0].message, whole);
    EXPECT_EQ(panel.notices[1].message, whole + "…");
    EXPECT_EQ(panel.notices[2].message, "a" + umlauts.substr(0, 1998) + "…");
}

} // namespace
} // namespace varnhold::testing
