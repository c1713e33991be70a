#include "OmbrixCore/OmbrixPaths.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

/// `given` holds options and variables as "name=value", with blanks between them.
OmbrixPaths::Location resolve(const std::string& given,
                              const std::string& executable = "/usr/bin/ombrix-cli") {
    std::map<std::string, std::string> values;
    std::istringstream words(given);
    for (std::string word; words >> word;)
        values[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    const auto value = [&](const std::string& name) -> std::optional<std::string> {
        if (!values.contains(name)) return std::nullopt;
        return values.at(name);
    };
    return OmbrixPaths::resolve({.dbPath = value("--db-path"),
                                 .supportDir = value("--support-dir"),
                                 .environment = value,
                                 .executable = executable,
                                 .home = "/home/ilse",
                                 .workingDirectory = [] { return "/here"; }});
}

const std::string infoPlist =
    "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>OmbrixSupportDirectoryName</key>"
    "<string>Ombrix Dev</string></dict></plist>";
}  // namespace

TEST(OmbrixPaths, TheFirstSourceThatIsGivenDecides) {
    const std::string folder = "/home/ilse/Library/Application Support/Ombrix";
    const OmbrixPaths::Location standard = {folder, folder + "/ombrix.db"};
    const std::pair<const char*, OmbrixPaths::Location> cases[] = {
        {"", standard},
        {"--support-dir=/tmp/b OMBRIX_DB_PATH=/v/x.db", {"/tmp/b", "/tmp/b/ombrix.db"}},
        {"--db-path= OMBRIX_SUPPORT_DIR=/v", {"/v", "/v/ombrix.db"}},
        {"--db-path= --support-dir=", standard},
        {"OMBRIX_DB_PATH=/tmp/d/ombrix.db", {"/tmp/d", "/tmp/d/ombrix.db"}},
        // An empty support variable counts beside a database.
        {"OMBRIX_DB_PATH=/tmp/d/ombrix.db OMBRIX_SUPPORT_DIR= TARVEN_SUPPORT_DIR=/old",
         {"/here", "/tmp/d/ombrix.db"}},
        {"OMBRIX_SUPPORT_DIR= TARVEN_SUPPORT_DIR=/old", standard},
        // The earlier product's names; an empty newer one hides the older one.
        {"TARVEN_DB_PATH=/old/x.db TARVEN_SUPPORT_DIR=/old/s", {"/old/s", "/old/x.db"}},
        {"OMBRIX_DB_PATH= TARVEN_DB_PATH=/old/x.db TARVEN_SUPPORT_DIR=/old/s",
         {"/old/s", "/old/s/ombrix.db"}},
        // Nothing is resolved in a relative path.
        {"--db-path=../a//x.db --support-dir=~/b/", {"/here/~/b", "/here/../a//x.db"}},
        {"--db-path=x.db", {"/here", "/here/x.db"}},
        {"--db-path=/x.db", {"/", "/x.db"}},
    };
    for (const auto& [given, expected] : cases) EXPECT_EQ(resolve(given), expected) << given;
}

TEST(OmbrixPaths, TheNearestBundleNamesTheSupportDirectoryElseItIsOmbrix) {
    const test::TestFolder folder;
    folder.write("Outer.app/Contents/Info.plist", infoPlist);
    std::filesystem::create_symlink(folder.write("Outer.app/Contents/Helpers/deep/tool", ""),
                                    folder.at("link"));
    EXPECT_EQ(resolve("", folder.at("link")).supportDirectory,
              "/home/ilse/Library/Application Support/Ombrix Dev");
    folder.write("Outer.app/Inner.app/Contents/other.txt", "");
    folder.write("Empty.app/Contents/Info.plist",
                 "<plist version=\"1.0\"><dict><key>OmbrixSupportDirectoryName</key>"
                 "<string></string></dict></plist>");
    folder.write("Garbage.app/Contents/Info.plist", "garbage");
    folder.write("Folder.app/Contents/Info.plist/x", "");
    std::filesystem::resize_file(folder.write("Huge.app/Contents/Info.plist", infoPlist), 1L << 40);
    folder.write("Upper.APP/Contents/Info.plist", infoPlist);
    const auto name = OmbrixPaths::enclosingAppSupportDirectoryName;
    EXPECT_EQ(name(folder.at("Outer.app/Contents/MacOS/ombrix-cli")), "Ombrix Dev");
    for (const char* executable :
         {"Outer.app/Inner.app/ombrix-cli", "Empty.app/ombrix-cli", "Garbage.app/ombrix-cli",
          "Folder.app/ombrix-cli", "Huge.app/ombrix-cli", "Upper.APP/ombrix-cli",
          "plain/ombrix-cli", "Outer.app"}) {
        EXPECT_EQ(name(folder.at(executable)), "Ombrix") << executable;
    }
    for (const char* executable : {"", "/", "/ombrix-cli", "ombrix-cli", "/nowhere.app/x"})
        EXPECT_EQ(name(executable), "Ombrix") << executable;
    EXPECT_EQ(name(std::nullopt), "Ombrix");
}

TEST(OmbrixPaths, TheBundleIsPartOfThePathTheToolWasStartedWith) {
    const std::string installed = "/Applications/Ombrix.app";
    const auto bundle = [&](const char* argument0, bool isInstalled) {
        return OmbrixPaths::appBundlePath(argument0, "/here", [&](const std::string& path) {
            return isInstalled && path == installed;
        });
    };
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"../x/B.app/./Contents/MacOS/ombrix-cli", "/x/B.app"},
        {"/A.app/Contents/B.app/Contents/x", "/A.app/Contents/B.app"},
        {"/A.app/Contents/folder/Contents/x", std::nullopt},  // the last one counts
        {"/A.app/Contents/../../ombrix-cli", std::nullopt},
        {"/Contents/x", std::nullopt},
        {"/A.app/contents/x", std::nullopt},
        {"ombrix-cli", std::nullopt},
    };
    for (const auto& [argument0, expected] : cases) {
        EXPECT_EQ(bundle(argument0, false), expected) << argument0;
        EXPECT_EQ(bundle(argument0, true), expected.value_or(installed)) << argument0;
    }
}
}  // namespace ombrix
