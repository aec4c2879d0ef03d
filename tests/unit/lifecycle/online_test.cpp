#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fleet_fixture.h"
#include "lifecycle/service_control.h"

namespace varnhold {
namespace {

using platform::ProcessRequest;
using platform::ProcessResult;
using platform::Stream;

TEST(ListsLivingProcess, APositiveProcessIdIsLifeAndZeroIsNot) {
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 123;"));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 0;"));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = -5;"));
}

TEST(ListsLivingProcess, BlanksAroundTheSignsDoNotMatter) {
    EXPECT_TRUE(listsLivingProcess("\"PID\"=123;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 12 ;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = +12;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 12"));
    EXPECT_TRUE(listsLivingProcess("\t \"PID\" = 12; \t"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = ;;12;;"));
}

TEST(ListsLivingProcess, ATabBesideTheNumberIsNoNumber) {
    EXPECT_FALSE(listsLivingProcess("\"PID\" =\t12;"));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 12\t;"));
}

TEST(ListsLivingProcess, AValueThatIsNoNumberLeavesTheVerdictToTheNextLine) {
    EXPECT_FALSE(listsLivingProcess("\"PID\" = abc;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = abc;\n\"PID\" = 7;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\"\n\"PID\" =\n\"PID\" = 7;"));
}

TEST(ListsLivingProcess, TheFirstNumberIsTheOnlyVerdict) {
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 0;\n\"PID\" = 7;"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 7;\n\"PID\" = 0;"));
}

TEST(ListsLivingProcess, OnlyTheQuotedKeyAtTheStartOfALineCounts) {
    EXPECT_FALSE(listsLivingProcess("\"PIDFile\" = \"x\";"));
    EXPECT_FALSE(listsLivingProcess("\"PIDFile\" = 7;"));
    EXPECT_FALSE(listsLivingProcess("PID = 7;"));
    EXPECT_FALSE(listsLivingProcess("\"pid\" = 7;"));
    EXPECT_FALSE(listsLivingProcess("\"Label\" = \"PID\"; \"PID\" = 7;"));
    EXPECT_FALSE(listsLivingProcess("\r\"PID\" = 7;"));
}

TEST(ListsLivingProcess, OnlyTheSecondPieceOfALineCounts) {
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 7 = 0;"));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 0 = 7;"));
}

TEST(ListsLivingProcess, EmptyTextAndTextThatIsNotUtf8ListNothing) {
    EXPECT_FALSE(listsLivingProcess(""));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 7;\n\xFF"));
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 7;\n\xC3"));
    EXPECT_TRUE(listsLivingProcess("\"PID\" = 7;\né"));
}

TEST(ListsLivingProcess, AWholeListingWithAndWithoutAProcess) {
    const std::string head = "{\n\t\"StandardOutPath\" = \"/tmp/vh-cos.log\";\n"
                             "\t\"LimitLoadToSessionType\" = \"Aqua\";\n"
                             "\t\"Label\" = \"com.ostrelleai.cos.telegramd\";\n"
                             "\t\"OnDemand\" = false;\n\t\"LastExitStatus\" = 256;\n";
    const std::string tail = "\t\"Program\" = \"/usr/bin/python3\";\n\t\"ProgramArguments\" = (\n"
                             "\t\t\"/usr/bin/python3\";\n\t\t\"-m\";\n\t);\n};\n";
    EXPECT_FALSE(listsLivingProcess(head + tail));
    EXPECT_TRUE(listsLivingProcess(head + "\t\"PID\" = 447;\n" + tail));
}

TEST(ListsLivingProcess, ANumberBeyondSixtyFourBitsIsNoNumber) {
    EXPECT_FALSE(listsLivingProcess("\"PID\" = 99999999999999999999;"));
}

class IsDaemonOnline : public FleetFixture {
protected:
    [[nodiscard]] bool onlineWith(const ProcessResult& result) {
        fake.answer = [result](const ProcessRequest&) { return result; };
        return isDaemonOnline(context, "com.x");
    }
    static ProcessResult printed(const std::string& text) {
        ProcessResult result;
        result.started = true;
        result.standardOutput = text;
        return result;
    }
};

TEST_F(IsDaemonOnline, AsksForOneLabelAndWaits) {
    EXPECT_TRUE(onlineWith(printed("\"PID\" = 4711;\n")));
    ASSERT_EQ(fake.children.size(), 1U);
    EXPECT_TRUE(fake.children[0].waited);
    EXPECT_EQ(fake.children[0].request, (ProcessRequest{.program = "/bin/launchctl",
                                                        .arguments = {"list", "com.x"},
                                                        .standardOutput = Stream::captured,
                                                        .standardError = Stream::discarded,
                                                        .deadline = listingDeadline}));
    EXPECT_EQ(fake.record, std::vector<std::string>{"run launchctl list com.x"});
}

TEST_F(IsDaemonOnline, AnUnknownLabelAndAnIdleJobAreOffline) {
    ProcessResult unknown = printed("");
    unknown.status = 113;
    EXPECT_FALSE(onlineWith(unknown));
    EXPECT_FALSE(onlineWith(printed("{\n\t\"Label\" = \"com.x\";\n};\n")));
    EXPECT_FALSE(onlineWith(printed("\"PID\" = 7;\xFF")));
}

TEST_F(IsDaemonOnline, TheExitStatusDoesNotMatter) {
    ProcessResult result = printed("\"PID\" = 7;");
    result.status = 1;
    EXPECT_TRUE(onlineWith(result));
    result.signalled = true;
    EXPECT_TRUE(onlineWith(result));
}

TEST_F(IsDaemonOnline, AToolThatCannotBeLaunchedMeansOffline) {
    EXPECT_FALSE(onlineWith(ProcessResult{}));
}

} // namespace
} // namespace varnhold
