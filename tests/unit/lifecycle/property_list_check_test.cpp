#include "lifecycle/property_list_check.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lifecycle/property_list.h"

namespace varnhold {
namespace {

std::string repeated(const std::string& text, std::size_t times) {
    std::string out;
    for (std::size_t i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

std::string xml(const std::string& more) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
           "<key>Label</key><string>com.example</string>"
           "<key>ProgramArguments</key><array><string>/bin/true</string></array>" +
           more + "</dict></plist>";
}

// A binary list of the given values, the first of which is its root.
std::string binary(const std::vector<std::string>& values) {
    std::string out = "bplist00";
    std::string offsets;
    for (const std::string& value : values) {
        offsets += {static_cast<char>(out.size() >> 8U), static_cast<char>(out.size() & 255U)};
        out += value;
    }
    const std::size_t table = out.size();
    const auto number = [](std::size_t value) {
        std::string digits;
        for (int shift = 56; shift >= 0; shift -= 8) {
            digits += static_cast<char>((value >> static_cast<unsigned>(shift)) & 255U);
        }
        return digits;
    };
    return out + offsets + std::string(6, '\0') + "\x02\x01" + number(values.size()) + number(0) +
           number(table);
}

std::string reason(const std::string& content) {
    const auto list = decodePropertyList(content);
    return list ? "" : list.error();
}

TEST(PropertyListCheck, LetsOrdinaryListsPass) {
    EXPECT_EQ(reason(xml("")), "");
    EXPECT_EQ(reason(xml("<key>Deep</key>" + repeated("<array>", 200) + repeated("</array>", 200))),
              "");
    EXPECT_EQ(reason(xml("<key>Dash</key><string>&#8211; &#x2014; &#169;</string>")), "");
    const std::string dictionary{'\xD2', 1, 2, 3, 4};
    EXPECT_EQ(reason(binary({dictionary, "\x55Label", "\x5F\x10\x10ProgramArguments", "\x53job",
                             std::string{'\xA1', 5}, "\x59/bin/true"})),
              "");
}

TEST(PropertyListCheck, RefusesMoreThanAMegabyte) {
    EXPECT_EQ(reason(xml("<!--" + std::string(largestPropertyList, 'x') + "-->")),
              "a property list can't be larger than a megabyte");
}

TEST(PropertyListCheck, RefusesAnXmlListThatNestsTooDeep) {
    const std::string why = "a property list can't nest that deep";
    for (const std::string tag : {"array", "dict", "plist"}) {
        EXPECT_EQ(reason(xml(repeated("<" + tag + ">", 40'000))), why) << tag;
    }
    EXPECT_EQ(reason(repeated("<array>", 100'000)), why);
}

TEST(PropertyListCheck, RefusesThousandsOfValues) {
    EXPECT_EQ(reason(xml("<key>Many</key><array>" + repeated("<true/>", 50'000) + "</array>")),
              "a property list can't hold that many values");
}

TEST(PropertyListCheck, RefusesANulHoweverItIsWritten) {
    const std::string why = "a property list can't hold a NUL";
    EXPECT_EQ(reason(xml(std::string("<key>a\0b</key><true/>", 21))), why);
    for (const std::string nul :
         {"&#0;", "&#x0;", "&#X000;", "&#00;", "&#;", "&#4294967296;", "&#x100000000;"}) {
        EXPECT_EQ(reason(xml("<key>a" + nul + "b</key><true/>")), why) << nul;
    }
    const std::string dictionary{'\xD1', 1, 2};
    EXPECT_EQ(reason(binary({dictionary,
                             std::string("\x53"
                                         "a\0b",
                                         4),
                             "\x09"})),
              why);
    EXPECT_EQ(reason(binary({dictionary, std::string("\x62\0a\0\0", 5), "\x09"})), why);
}

TEST(PropertyListCheck, RefusesABinaryListThatGrowsByWhatItShares) {
    std::vector<std::string> levels;
    for (char next = 1; next <= 30; ++next) {
        levels.push_back(std::string{'\xAA'} + std::string(10, next)); // ten times the next
    }
    levels.emplace_back("\x09");
    EXPECT_EQ(reason(binary(levels)), "a property list can't hold that many values");
}

TEST(PropertyListCheck, RefusesABinaryListThatHoldsItselfOrNestsTooDeep) {
    const std::string why = "a property list can't nest that deep";
    EXPECT_EQ(reason(binary({std::string{'\xA1', 0}})), why);
    std::vector<std::string> levels;
    for (int next = 1; next < 100; ++next) {
        levels.push_back({'\xA1', static_cast<char>(next)});
    }
    levels.emplace_back("\x09");
    EXPECT_EQ(reason(binary(levels)), why);
}

TEST(PropertyListCheck, RefusesABinaryListThatPointsOutOfItself) {
    EXPECT_EQ(reason("bplist00"), "a property list ends too early");
    EXPECT_EQ(reason(binary({std::string{'\xA1', 7}})),
              "a property list names a value that isn't there");
    EXPECT_EQ(reason(binary({std::string("\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)})),
              "a property list ends too early");
    EXPECT_EQ(reason(binary({"\x5F\x11\x40"})), "a property list ends too early");
}

TEST(PropertyListCheck, RefusesABinaryListWhoseNumbersHaveNoSizeOrTooLargeAOne) {
    const std::string whole = binary({std::string{'\xA1', 1}, "\x09"});
    for (const std::size_t fromEnd : {26U, 25U}) { // the sizes of offsets and of references
        for (const char size : {'\0', '\x09', '\xFF'}) {
            std::string changed = whole;
            changed[whole.size() - fromEnd] = size;
            EXPECT_EQ(reason(changed), fromEnd == 26U
                                           ? "a property list names a value that isn't there"
                                           : "a property list ends too early")
                << int{size};
        }
    }
}

// Whatever is cut off or changed, an answer comes.
TEST(PropertyListCheck, EveryPieceOfAListIsAnswered) {
    const std::string whole =
        binary({std::string{'\xD2', 1, 2, 3, 4}, "\x55Label", "\x5F\x10\x10ProgramArguments",
                "\x53job", std::string{'\xA1', 5}, "\x59/bin/true"});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_NE(reason(whole.substr(0, length)), "") << length;
        for (const char other : {'\0', '\xFF', '\x7F', '\xA1', '\xDF'}) {
            std::string changed = whole;
            changed[length] = other;
            static_cast<void>(checkPropertyList(changed));
        }
    }
}

} // namespace
} // namespace varnhold
