// SPDX-License-Identifier: MIT
#include "terminal/json.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string replacement = "\xef\xbf\xbd";

TEST(Json, escapes_every_control_character) {
    for (char character = 1; character < ' '; ++character) {
        const std::string json = tool::to_json(std::string(1, character));
        EXPECT_EQ(json[1], '\\') << int(character);
        EXPECT_TRUE(json.size() == 4 || json.size() == 8) << json;
    }
    EXPECT_EQ(tool::to_json(std::string(1, '\0')), "\"\\u0000\"");
    EXPECT_EQ(tool::to_json("\x01\x1f\x7f"), "\"\\u0001\\u001f\\u007f\"");
    EXPECT_EQ(tool::to_json("\xc2\x9b\xc2\xa0"), "\"\\u009b\xc2\xa0\"");
}

TEST(Json, keeps_characters_of_every_length) {
    for (const char* text : {"", "a", "\xc2\xa0", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80",
                             "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_EQ(tool::to_json(text), '"' + std::string(text) + '"');
}

TEST(Json, replaces_each_byte_that_is_not_valid) {
    for (const char* text : {"\xc1\x81", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xf0\x8f\xbf\xbf",
                             "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\x80", "\xc3", "\xe2\x82", "\xff"}) {
        std::string expected;
        for (std::size_t i = 0; i < std::string(text).size(); ++i)
            expected += replacement;
        EXPECT_EQ(tool::to_json(text), '"' + expected + '"');
    }
    EXPECT_EQ(tool::to_json("\xc3("), '"' + replacement + "(\"");
    EXPECT_EQ(tool::to_json("\xe2\x82\""), '"' + replacement + replacement + "\\\"\"");
}

}  // namespace
