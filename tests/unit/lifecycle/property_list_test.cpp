#include "lifecycle/property_list.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <plist/plist.h>
#include <string>
#include <utility>
#include <vector>

namespace varnhold {
namespace {

using namespace std::string_literals;

constexpr const char* frame = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)";

std::string document(const std::string& root) {
    return frame + root + "</plist>\n";
}

PropertyList sample() {
    return {.label = "com.ostrelleai.cos.telegramd",
            .keepAlive = true,
            .runAtLoad = true,
            .environmentVariables = {{"PATH", "/usr/bin:/bin"}, {"HOME", "/h"}},
            .programArguments = {"/usr/bin/python3", "-m", "module"},
            .workingDirectory = "/d",
            .standardOutPath = "/tmp/o.log",
            .standardErrorPath = "/tmp/e.log"};
}

TEST(EncodePropertyList, ByteForByte) {
    EXPECT_EQ(encodePropertyList(sample()).value(),
              document("<dict>\n"
                       "\t<key>EnvironmentVariables</key>\n"
                       "\t<dict>\n"
                       "\t\t<key>HOME</key>\n"
                       "\t\t<string>/h</string>\n"
                       "\t\t<key>PATH</key>\n"
                       "\t\t<string>/usr/bin:/bin</string>\n"
                       "\t</dict>\n"
                       "\t<key>KeepAlive</key>\n"
                       "\t<true/>\n"
                       "\t<key>Label</key>\n"
                       "\t<string>com.ostrelleai.cos.telegramd</string>\n"
                       "\t<key>ProgramArguments</key>\n"
                       "\t<array>\n"
                       "\t\t<string>/usr/bin/python3</string>\n"
                       "\t\t<string>-m</string>\n"
                       "\t\t<string>module</string>\n"
                       "\t</array>\n"
                       "\t<key>RunAtLoad</key>\n"
                       "\t<true/>\n"
                       "\t<key>StandardErrorPath</key>\n"
                       "\t<string>/tmp/e.log</string>\n"
                       "\t<key>StandardOutPath</key>\n"
                       "\t<string>/tmp/o.log</string>\n"
                       "\t<key>WorkingDirectory</key>\n"
                       "\t<string>/d</string>\n"
                       "</dict>\n"));
}

TEST(EncodePropertyList, EmptyContainersAndTexts) {
    const PropertyList list{.label = "",
                            .keepAlive = false,
                            .runAtLoad = false,
                            .environmentVariables = {},
                            .programArguments = {},
                            .workingDirectory = "",
                            .standardOutPath = "",
                            .standardErrorPath = ""};
    EXPECT_EQ(encodePropertyList(list).value(), document("<dict>\n"
                                                         "\t<key>EnvironmentVariables</key>\n"
                                                         "\t<dict/>\n"
                                                         "\t<key>KeepAlive</key>\n"
                                                         "\t<false/>\n"
                                                         "\t<key>Label</key>\n"
                                                         "\t<string></string>\n"
                                                         "\t<key>ProgramArguments</key>\n"
                                                         "\t<array/>\n"
                                                         "\t<key>RunAtLoad</key>\n"
                                                         "\t<false/>\n"
                                                         "\t<key>StandardErrorPath</key>\n"
                                                         "\t<string></string>\n"
                                                         "\t<key>StandardOutPath</key>\n"
                                                         "\t<string></string>\n"
                                                         "\t<key>WorkingDirectory</key>\n"
                                                         "\t<string></string>\n"
                                                         "</dict>\n"));
}

TEST(EncodePropertyList, OnlyThreeSignsAreEscaped) {
    PropertyList list = sample();
    list.label = R"(a&b<c>d"e'f)";
    list.environmentVariables = {{"K&<>\"", "v&<>\""}};
    const std::string text = encodePropertyList(list).value();
    EXPECT_NE(text.find(R"(<string>a&amp;b&lt;c&gt;d"e'f</string>)"), std::string::npos);
    EXPECT_NE(text.find(R"(<key>K&amp;&lt;&gt;"</key>)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"(<string>v&amp;&lt;&gt;"</string>)"), std::string::npos);
}

TEST(EncodePropertyList, TextThatNoPropertyListCanCarryIsRefusedWhereverItStands) {
    for (const std::string& bad : {"a\0b"s, "\x01"s, "\x0B"s, "\x1B[0m"s, "\x1F"s, "\xEF\xBF\xBE"s,
                                   "\xEF\xBF\xBF"s, "\xFF"s, "\xC3"s}) {
        const std::vector<std::function<void(PropertyList&)>> spoil{
            [&](PropertyList& list) { list.label = bad; },
            [&](PropertyList& list) { list.environmentVariables[bad] = "v"; },
            [&](PropertyList& list) { list.environmentVariables["K"] = bad; },
            [&](PropertyList& list) { list.programArguments.push_back(bad); },
            [&](PropertyList& list) { list.workingDirectory = bad; },
            [&](PropertyList& list) { list.standardOutPath = bad; },
            [&](PropertyList& list) { list.standardErrorPath = bad; }};
        for (std::size_t i = 0; i < spoil.size(); ++i) {
            PropertyList list = sample();
            spoil[i](list);
            EXPECT_FALSE(encodePropertyList(list))
                << ::testing::PrintToString(bad) << " in place " << i;
        }
    }
}

TEST(PropertyListRoundTrip, KeepsEveryValue) {
    PropertyList list = sample();
    EXPECT_EQ(decodePropertyList(encodePropertyList(list).value()).value(), list);
    list.keepAlive = false;
    EXPECT_EQ(decodePropertyList(encodePropertyList(list).value()).value(), list);
    list.keepAlive = true;
    list.runAtLoad = false;
    EXPECT_EQ(decodePropertyList(encodePropertyList(list).value()).value(), list);
}

TEST(PropertyListRoundTrip, KeepsUnusualTexts) {
    for (const std::string& text :
         {"a role with blanks"s, " leading and trailing "s, "grün 😀 日本"s, "&lt;&amp;#65;"s,
          "]]>"s, "<!-- x -->"s, "tab\tline\nend"s, "line\r\nend\r"s, "\x7F"s, "'\"$`\\%;"s,
          "\xEF\xBF\xBD"s, ""s}) {
        PropertyList list = sample();
        list.environmentVariables["KEY"] = text;
        list.programArguments.push_back(text);
        list.workingDirectory = text;
        const auto decoded = decodePropertyList(encodePropertyList(list).value());
        ASSERT_TRUE(decoded) << decoded.error() << ::testing::PrintToString(text);
        EXPECT_EQ(*decoded, list) << ::testing::PrintToString(text);
    }
}

TEST(PropertyListRoundTrip, KeepsUnusualVariableNames) {
    PropertyList list = sample();
    list.environmentVariables = {{"X-Y_OAUTH_TOKEN", "1"},
                                 {"_OAUTH_TOKEN", "2"},
                                 {"A&B <C>_OAUTH_TOKEN", "3"},
                                 {"ÉÀ_OAUTH_TOKEN", "4"}};
    EXPECT_EQ(decodePropertyList(encodePropertyList(list).value()).value(), list);
}

TEST(DecodePropertyList, WhatIsMissingHasTheValuesOfAnyServiceManager) {
    const PropertyList list =
        decodePropertyList(document("<dict><key>Label</key><string>l</string>"
                                    "<key>ProgramArguments</key>"
                                    "<array><string>/bin/true</string></array></dict>"))
            .value();
    EXPECT_EQ(list, (PropertyList{.label = "l",
                                  .keepAlive = false,
                                  .runAtLoad = false,
                                  .environmentVariables = {},
                                  .programArguments = {"/bin/true"},
                                  .workingDirectory = "",
                                  .standardOutPath = "",
                                  .standardErrorPath = ""}));
}

TEST(DecodePropertyList, UnknownKeysAndOtherOrderAreFine) {
    const auto list =
        decodePropertyList(document("<dict><key>ThrottleInterval</key><integer>5</integer>"
                                    "<key>ProgramArguments</key>"
                                    "<array><string>/bin/true</string></array>"
                                    "<key>KeepAlive</key><true/>"
                                    "<key>Label</key><string>l</string></dict>"));
    ASSERT_TRUE(list) << list.error();
    EXPECT_EQ(list->label, "l");
    EXPECT_TRUE(list->keepAlive);
}

TEST(DecodePropertyList, TheBinaryFormIsReadToo) {
    const std::string xml = encodePropertyList(sample()).value();
    plist_t root = nullptr;
    plist_from_xml(xml.data(), static_cast<uint32_t>(xml.size()), &root);
    const std::unique_ptr<void, decltype(&plist_free)> owner(root, &plist_free);
    char* bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root, &bytes, &length);
    const std::unique_ptr<char, decltype(&std::free)> content(bytes, &std::free);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(decodePropertyList({bytes, length}).value(), sample());
}

TEST(DecodePropertyList, LabelAndProgramMustBeThere) {
    const std::string arguments = "<key>ProgramArguments</key><array><string>/x</string></array>";
    EXPECT_TRUE(decodePropertyList(
        document("<dict><key>Label</key><string>l</string>" + arguments + "</dict>")));
    for (const std::string& root :
         {"<dict>" + arguments + "</dict>",
          "<dict><key>Label</key><string></string>" + arguments + "</dict>",
          "<dict><key>Label</key><string>l</string></dict>"s,
          "<dict><key>Label</key><string>l</string><key>ProgramArguments</key><array/></dict>"s,
          "<dict><key>Label</key><string>l</string><key>ProgramArguments</key>"
          "<array><string></string></array></dict>"s}) {
        EXPECT_FALSE(decodePropertyList(document(root))) << root;
    }
}

TEST(DecodePropertyList, AWrongTypeIsRefusedAndNamed) {
    const std::string good = "<key>Label</key><string>l</string><key>ProgramArguments</key>"
                             "<array><string>/x</string></array>";
    const std::vector<std::pair<std::string, std::string>> wrong{
        {"KeepAlive", "<string>yes</string>"},
        {"KeepAlive", "<integer>1</integer>"},
        {"RunAtLoad", "<dict/>"},
        {"EnvironmentVariables", "<array/>"},
        {"EnvironmentVariables", "<dict><key>A</key><integer>1</integer></dict>"},
        {"WorkingDirectory", "<true/>"},
        {"StandardOutPath", "<array/>"},
        {"StandardErrorPath", "<integer>2</integer>"}};
    for (const auto& [key, value] : wrong) {
        const auto list = decodePropertyList(
            document("<dict>" + good + "<key>" + key + "</key>" + value + "</dict>"));
        ASSERT_FALSE(list) << key << value;
        EXPECT_EQ(list.error(), key + " has a wrong type");
    }
    EXPECT_FALSE(decodePropertyList(
        document("<dict><key>Label</key><integer>1</integer><key>ProgramArguments</key>"
                 "<array><string>/x</string></array></dict>")));
    EXPECT_FALSE(decodePropertyList(
        document("<dict><key>Label</key><string>l</string><key>ProgramArguments</key>"
                 "<array><string>/x</string><integer>1</integer></array></dict>")));
    EXPECT_FALSE(decodePropertyList(
        document("<dict><key>Label</key><string>l</string><key>ProgramArguments</key>"
                 "<string>/x</string></dict>")));
}

TEST(DecodePropertyList, WhatIsNoPropertyListIsRefused) {
    for (const std::string& content :
         {""s, "x"s, "not a property list at all"s, "{}"s, "[]"s, "<plist>"s, "bplist00"s,
          "\0\0\0\0\0\0\0\0\0\0\0\0"s, document("<array/>"), document("<string>l</string>"),
          document("<dict>"), document("")}) {
        EXPECT_FALSE(decodePropertyList(content)) << content;
    }
    const std::string good = encodePropertyList(sample()).value();
    EXPECT_FALSE(decodePropertyList(good.substr(0, good.size() / 2)));
}

} // namespace
} // namespace varnhold
