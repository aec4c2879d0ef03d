#include "launchctl/listing.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lifecycle/service_control.h"

namespace varnhold::services {
namespace {

constexpr int endedByTerm = 15;
constexpr int endedByKill = 9;
constexpr int dumpedCore = 128 + 11;
constexpr int exitedWith1 = 1 << 8;
constexpr int exitedWith78 = 78 << 8;

PropertyList plainList() {
    return {.label = "com.example",
            .programArguments = {"/usr/bin/python3", "-m", "module"},
            .standardOutPath = "/tmp/out.log",
            .standardErrorPath = "/tmp/error.log"};
}

TEST(LastStatus, IsTheExitCodeOrMinusTheSignal) {
    EXPECT_EQ(lastStatus(0), 0);
    EXPECT_EQ(lastStatus(exitedWith1), 1);
    EXPECT_EQ(lastStatus(exitedWith78), 78);
    EXPECT_EQ(lastStatus(endedByTerm), -15);
    EXPECT_EQ(lastStatus(endedByKill), -9);
    EXPECT_EQ(lastStatus(dumpedCore), -11);
}

TEST(JobTable, HasItsHeaderAlsoWithNoJob) {
    EXPECT_EQ(jobTable({}), "PID\tStatus\tLabel\n");
}

TEST(JobTable, HasARowForEachJobWithTabsBetween) {
    const std::vector<JobState> jobs{{.label = {"com.a"}, .process = 447},
                                     {.label = {"com.b c"}, .lastEnd = endedByTerm},
                                     {.label = {"com.d"}, .lastEnd = exitedWith78},
                                     {.label = {"com.ü"}, .process = 12, .lastEnd = exitedWith1}};
    EXPECT_EQ(jobTable(jobs), "PID\tStatus\tLabel\n"
                              "447\t0\tcom.a\n"
                              "-\t-15\tcom.b c\n"
                              "-\t78\tcom.d\n"
                              "12\t1\tcom.ü\n");
}

TEST(JobProperties, OfARunningJobHoldAProcessIdThatTheSupervisorFinds) {
    const std::string text = jobProperties({.label = {"com.example"}, .process = 447}, plainList());
    EXPECT_EQ(text, "{\n"
                    "\t\"StandardOutPath\" = \"/tmp/out.log\";\n"
                    "\t\"LimitLoadToSessionType\" = \"Aqua\";\n"
                    "\t\"StandardErrorPath\" = \"/tmp/error.log\";\n"
                    "\t\"Label\" = \"com.example\";\n"
                    "\t\"OnDemand\" = false;\n"
                    "\t\"LastExitStatus\" = 0;\n"
                    "\t\"PID\" = 447;\n"
                    "\t\"Program\" = \"/usr/bin/python3\";\n"
                    "\t\"ProgramArguments\" = (\n"
                    "\t\t\"/usr/bin/python3\";\n"
                    "\t\t\"-m\";\n"
                    "\t\t\"module\";\n"
                    "\t);\n"
                    "};\n");
    EXPECT_TRUE(listsLivingProcess(text));
}

TEST(JobProperties, OfAJobThatDoesNotRunHaveNoProcessIdAndTheWholeWaitStatus) {
    PropertyList list = plainList();
    list.keepAlive = false;
    const std::string text =
        jobProperties({.label = {"com.example"}, .lastEnd = exitedWith1}, list);
    EXPECT_EQ(text.find("\"PID\""), std::string::npos);
    EXPECT_NE(text.find("\t\"LastExitStatus\" = 256;\n"), std::string::npos);
    EXPECT_NE(text.find("\t\"OnDemand\" = true;\n"), std::string::npos);
    EXPECT_FALSE(listsLivingProcess(text));
}

TEST(JobProperties, NoValueCanPassForALineOfItsOwn) {
    PropertyList list = plainList();
    list.standardOutPath = "a\"b\\c";
    list.programArguments = {"/bin/x", "\n\t\"PID\" = 99;\n", "\r\n\"PID\" = 98;"};
    const std::string text = jobProperties({.label = {"com.example"}}, list);
    EXPECT_NE(text.find("\t\"StandardOutPath\" = \"a\\\"b\\\\c\";\n"), std::string::npos);
    EXPECT_NE(text.find("\t\t\"\\n\t\\\"PID\\\" = 99;\\n\";\n"), std::string::npos);
    EXPECT_NE(text.find("\t\t\"\\r\\n\\\"PID\\\" = 98;\";\n"), std::string::npos);
    EXPECT_FALSE(listsLivingProcess(text));
}

TEST(JobProperties, AValueThatIsNotUtf8DoesNotSpoilTheRest) {
    PropertyList list = plainList();
    list.programArguments = {"/bin/x", "\xFF\xFE"};
    const std::string text = jobProperties({.label = {"com.example"}, .process = 12}, list);
    EXPECT_TRUE(listsLivingProcess(text));
}

TEST(JobProperties, ALabelKeepsItsOddBytes) {
    const std::string text = jobProperties({.label = {"a %20 $x \"ü\""}}, plainList());
    EXPECT_NE(text.find("\t\"Label\" = \"a %20 $x \\\"ü\\\"\";\n"), std::string::npos);
}

} // namespace
} // namespace varnhold::services
