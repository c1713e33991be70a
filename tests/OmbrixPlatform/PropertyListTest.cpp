#include "OmbrixPlatform/PropertyList.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

std::optional<std::string> name(std::string_view bytes) {
    return PropertyList::string(bytes, "Name");
}

/// A binary property list of these objects; the first is the root. References have one byte.
std::string binary(const std::vector<std::string>& objects) {
    std::string text = "bplist00";
    std::string places;
    for (const std::string& object : objects) {
        places += static_cast<char>(text.size() >> 8);
        places += static_cast<char>(text.size());
        text += object;
    }
    const std::size_t table = text.size();
    const auto number = [](std::size_t n) {
        std::string bytes(8, '\0');
        bytes[6] = static_cast<char>(n >> 8);
        bytes[7] = static_cast<char>(n);
        return bytes;
    };
    return text + places + std::string(6, '\0') + "\x02\x01" + number(objects.size()) + number(0) +
           number(table);
}

std::string list(std::initializer_list<int> parts) {
    std::string object(1, static_cast<char>(0xA0 + parts.size()));
    for (const int part : parts) object += static_cast<char>(part);
    return object;
}

std::string dictionary(int key, int value) {
    return {'\xD1', static_cast<char>(key), static_cast<char>(value)};
}

const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist SYSTEM \"plist.dtd\">\n"
    "<plist version=\"1.0\">";
}  // namespace

TEST(PropertyList, AStringIsFoundInBothForms) {
    const std::string xml = head +
                            "<dict><key>Other</key><array><string>no</string></array>"
                            "<key>Name</key><string>Ombrix &amp; Dév</string></dict></plist>";
    EXPECT_EQ(name(xml), "Ombrix & Dév");
    EXPECT_EQ(name("\xEF\xBB\xBF" + xml), "Ombrix & Dév");
    EXPECT_EQ(name(binary({dictionary(1, 2), "\x54Name", "\x5AOmbrix Dev"})), "Ombrix Dev");
    EXPECT_EQ(name(binary({dictionary(1, 2), "\x54Name", std::string("\x62\0D\0\xE9", 5)})), "Dé");
    const std::string longer =
        "\x5F\x10\x12"
        "a name of 18 bytes";
    EXPECT_EQ(name(binary({dictionary(1, 2), "\x54Name", longer})), "a name of 18 bytes");
}

TEST(PropertyList, WhatHoldsNoSuchStringGivesNothing) {
    const struct {
        const char* why;
        std::string bytes;
    } cases[] = {
        {"text", "Name = Ombrix"},
        {"no dictionary", head + "<array><string>Name</string></array></plist>"},
        {"a number", head + "<dict><key>Name</key><integer>3</integer></dict></plist>"},
        {"one level down",
         head + "<dict><key>A</key><dict><key>Name</key><string>x</string></dict></dict></plist>"},
        {"not UTF-8", head + "<dict><key>Name</key><string>\xFF</string></dict></plist>"},
        {"a binary number", binary({dictionary(1, 2), "\x54Name", "\x10\x03"})},
    };
    for (const auto& [why, bytes] : cases) EXPECT_EQ(name(bytes), std::nullopt) << why;
}

TEST(PropertyList, DeepAndCyclicListsAreRefused) {
    std::string deepXml = head;
    for (int i = 0; i < 100000; ++i) deepXml += "<dict><key>Name</key>";
    EXPECT_EQ(name(deepXml), std::nullopt);

    std::vector<std::string> doubling;  // sixty lists, each containing the next one twice
    for (int i = 1; i <= 60; ++i) doubling.push_back(list({i, i}));
    doubling.push_back("\x51x");
    EXPECT_EQ(name(binary(doubling)), std::nullopt);

    EXPECT_EQ(name(binary({list({0})})), std::nullopt);  // contains itself
    EXPECT_EQ(name(binary({dictionary(1, 9), "\x54Name"})),
              std::nullopt);  // refers to a missing object
}

TEST(PropertyList, EveryDamageToAGoodFileIsSurvived) {
    const std::string good = binary({dictionary(1, 2), "\x54Name", "\x5AOmbrix Dev"});
    for (std::size_t at = 0; at < good.size(); ++at) {
        EXPECT_NE(name(good.substr(0, at)), "Ombrix Dev") << at;
        for (const int byte : {0x00, 0x01, 0x0F, 0x5F, 0x7F, 0xAF, 0xDF, 0xFF}) {
            std::string damaged = good;
            damaged[at] = static_cast<char>(byte);
            name(damaged);
        }
    }
}
}  // namespace ombrix
