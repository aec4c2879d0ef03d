#include "doctor/stored_defaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnhold::doctor {
namespace {

TEST(StoredDefaults, AreReadAsTheToolkitWritesThem) {
    const auto values = parseStoredDefaults("[General]\n"
                                            "api_key_openai=plain\n"
                                            "auth_method_google=Login (OAuth)\n"
                                            "a=\"x;y, \\\"z\\\"\"\n"
                                            "b=@@home\n"
                                            "c=\\x2022\\xe9\\n.\n"
                                            "empty=\n"
                                            "[Other]\n"
                                            "a=elsewhere\n");
    EXPECT_EQ(values.at("api_key_openai"), "plain");
    EXPECT_EQ(values.at("auth_method_google"), "Login (OAuth)");
    EXPECT_EQ(values.at("a"), "x;y, \"z\"");
    EXPECT_EQ(values.at("b"), "@home");
    EXPECT_EQ(values.at("c"), "•é\n.");
    EXPECT_EQ(values.at("empty"), "");
    EXPECT_EQ(values.size(), 6U);
}

} // namespace
} // namespace varnhold::doctor
