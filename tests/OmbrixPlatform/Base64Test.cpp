#include "OmbrixPlatform/Base64.h"

#include <gtest/gtest.h>

namespace ombrix {

TEST(Base64, ReadsWhatItWritesAndNothingElse) {
    const struct {
        std::string_view bytes, text;
    } published[] = {{"", ""},        {"f", "Zg=="},          {"fo", "Zm8="},
                     {"foo", "Zm9v"}, {"foobar", "Zm9vYmFy"}, {"\xFB\xFF\xBF", "+/+/"}};
    for (const auto& [bytes, text] : published) {
        EXPECT_EQ(Base64::encode(bytes), text);
        EXPECT_EQ(Base64::decode(text), bytes);
    }
    for (const auto* damaged : {"Z", "Zg", "Zg=", "Zm9vY", "=", "====", "Zg==Zg==", "Z===", "Zm=v",
                                "Zm9v\n\n\n\n", "Z m 9 v ", "-_-_", "Zm\xC3\xA9", "Zg= ="})
        EXPECT_FALSE(Base64::decode(damaged)) << damaged;
}
}  // namespace ombrix
