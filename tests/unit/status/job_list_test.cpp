#include "status/job_list.h"

#include <gtest/gtest.h>

#include <string>

namespace varnhold {
namespace {

TEST(Indicator, IsTheOnlyTextOfAStatus) {
    EXPECT_EQ(indicator(DaemonStatus::running), "🟢");
    EXPECT_EQ(indicator(DaemonStatus::stopped), "⚪\uFE0F");
    EXPECT_EQ(indicator(DaemonStatus::crashed), "🔴");
}

TEST(ParseJobList, AProcessIdMeansRunningWhateverTheExitColumnSays) {
    const StatusMap map = parseJobList("447\t0\ta\n448\t-15\tb\n449\t78\tc\n0\t1\td\n");
    EXPECT_EQ(map, (StatusMap{{"a", DaemonStatus::running},
                              {"b", DaemonStatus::running},
                              {"c", DaemonStatus::running},
                              {"d", DaemonStatus::running}}));
}

TEST(ParseJobList, WithoutAProcessZeroMeansStopped) {
    EXPECT_EQ(parseJobList("-\t0\ta"), (StatusMap{{"a", DaemonStatus::stopped}}));
}

TEST(ParseJobList, WithoutAProcessAnythingButZeroMeansCrashed) {
    EXPECT_EQ(parseJobList("-\t-9\ta\n-\t1\tb\n-\t78\tc\n-\t00\td\n-\t-0\te\n-\tx\tf\n"),
              (StatusMap{{"a", DaemonStatus::crashed},
                         {"b", DaemonStatus::crashed},
                         {"c", DaemonStatus::crashed},
                         {"d", DaemonStatus::crashed},
                         {"e", DaemonStatus::crashed},
                         {"f", DaemonStatus::crashed}}));
}

TEST(ParseJobList, OnlyExactlyADashMeansNoProcess) {
    EXPECT_EQ(parseJobList("--\t0\ta\n-1\t0\tb\nx\t0\tc"),
              (StatusMap{{"a", DaemonStatus::running},
                         {"b", DaemonStatus::running},
                         {"c", DaemonStatus::running}}));
}

TEST(ParseJobList, ALineWithTwoPiecesIsSkipped) {
    EXPECT_EQ(parseJobList("447\ta\n447\n\n \t \n-\t0\tb"),
              (StatusMap{{"b", DaemonStatus::stopped}}));
}

TEST(ParseJobList, OfFourPiecesTheThirdIsTheLabel) {
    EXPECT_EQ(parseJobList("447 0 third fourth"), (StatusMap{{"third", DaemonStatus::running}}));
}

TEST(ParseJobList, ALabelWithABlankIsKnownByItsFirstWord) {
    const StatusMap map = parseJobList("447\t0\tcom.ostrelleai.chief of staff.telegramd");
    EXPECT_EQ(statusOf(map, "com.ostrelleai.chief of staff.telegramd"), DaemonStatus::stopped);
    EXPECT_EQ(statusOf(map, "com.ostrelleai.chief"), DaemonStatus::running);
}

TEST(ParseJobList, AnyNumberOfBlanksAndTabsSeparates) {
    EXPECT_EQ(parseJobList("  447 \t  0\t\ta  "), (StatusMap{{"a", DaemonStatus::running}}));
}

TEST(ParseJobList, TheHeaderLineIsARowLikeAnyOther) {
    EXPECT_EQ(parseJobList("PID\tStatus\tLabel\n"), (StatusMap{{"Label", DaemonStatus::running}}));
}

TEST(ParseJobList, EveryJobOfTheUserEntersTheMap) {
    const StatusMap map = parseJobList("PID\tStatus\tLabel\n"
                                       "447\t0\tcom.ostrelleai.cos.telegramd\n"
                                       "-\t-15\tcom.ostrelleai.cto.telegramd\n"
                                       "-\t0\torg.example.system.helper\n");
    EXPECT_EQ(map.size(), 4U);
    EXPECT_EQ(statusOf(map, "com.ostrelleai.cos.telegramd"), DaemonStatus::running);
    EXPECT_EQ(statusOf(map, "com.ostrelleai.cto.telegramd"), DaemonStatus::crashed);
    EXPECT_EQ(statusOf(map, "org.example.system.helper"), DaemonStatus::stopped);
}

TEST(ParseJobList, OfTwoRowsWithOneLabelTheLastCounts) {
    EXPECT_EQ(parseJobList("447\t0\ta\n-\t1\ta"), (StatusMap{{"a", DaemonStatus::crashed}}));
}

TEST(ParseJobList, EmptyTextAndTextThatIsNotUtf8AreEmptyMaps) {
    EXPECT_TRUE(parseJobList("").empty());
    EXPECT_TRUE(parseJobList("447\t0\ta\n\xFF\n").empty());
    EXPECT_TRUE(parseJobList("447\t0\ta\xC3").empty());
    EXPECT_FALSE(parseJobList("447\t0\tgrün").empty());
}

TEST(ParseJobList, LinesEndAtLineFeedsAlone) {
    EXPECT_EQ(parseJobList("447\t0\ta\r448\t0\tb"), (StatusMap{{"a\r448", DaemonStatus::running}}));
    EXPECT_EQ(parseJobList("447\t0\ta\xE2\x80\xA8"),
              (StatusMap{{"a\xE2\x80\xA8", DaemonStatus::running}}));
}

TEST(StatusOf, AnUnknownLabelIsStoppedNeverCrashed) {
    EXPECT_EQ(statusOf({}, "a"), DaemonStatus::stopped);
    EXPECT_EQ(statusOf(parseJobList("-\t1\ta"), "A"), DaemonStatus::stopped);
    EXPECT_EQ(statusOf(parseJobList("-\t1\ta"), "a"), DaemonStatus::crashed);
}

} // namespace
} // namespace varnhold
