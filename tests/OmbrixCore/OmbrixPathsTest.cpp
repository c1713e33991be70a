#include "OmbrixCore/OmbrixPaths.h"

#include <gtest/gtest.h>

#include <map>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using Variables = std::map<std::string, std::string>;

struct Given {
    std::optional<std::string> dbPath = {};
    std::optional<std::string> supportDir = {};
    Variables variables = {};
    std::string executable = "/usr/bin/ombrix-cli";
};

OmbrixPaths::Location resolve(const Given& given) {
    return OmbrixPaths::resolve(
        {.dbPath = given.dbPath,
         .supportDir = given.supportDir,
         .environment = [&](const std::string& name) -> std::optional<std::string> {
             const auto found = given.variables.find(name);
             if (found == given.variables.end()) return std::nullopt;
             return found->second;
         },
         .executable = given.executable,
         .home = "/home/ilse",
         .workingDirectory = "/here"});
}

const std::string infoPlist =
    "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>OmbrixSupportDirectoryName</key>"
    "<string>Ombrix Dev</string></dict></plist>";
}  // namespace

TEST(OmbrixPaths, TheFirstSourceThatSpeaksDecides) {
    const OmbrixPaths::Location standard = {
        "/home/ilse/Library/Application Support/Ombrix",
        "/home/ilse/Library/Application Support/Ombrix/ombrix.db"};
    const struct {
        const char* why;
        Given given;
        OmbrixPaths::Location expected;
    } cases[] = {
        {"nothing given", {}, standard},
        {"an option hides every variable",
         {.supportDir = "/tmp/b", .variables = {{"OMBRIX_DB_PATH", "/v/x.db"}}},
         {"/tmp/b", "/tmp/b/ombrix.db"}},
        {"an empty option is none",
         {.dbPath = "", .variables = {{"OMBRIX_SUPPORT_DIR", "/v"}}},
         {"/v", "/v/ombrix.db"}},
        {"two empty options are none", {.dbPath = "", .supportDir = ""}, standard},
        {"a database variable alone",
         {.variables = {{"OMBRIX_DB_PATH", "/tmp/d/ombrix.db"}}},
         {"/tmp/d", "/tmp/d/ombrix.db"}},
        {"an empty support variable counts beside it",
         {.variables = {{"OMBRIX_DB_PATH", "/tmp/d/ombrix.db"},
                        {"OMBRIX_SUPPORT_DIR", ""},
                        {"TARVEN_SUPPORT_DIR", "/old"}}},
         {"/here", "/tmp/d/ombrix.db"}},
        {"the earlier product's names",
         {.variables = {{"TARVEN_DB_PATH", "/old/x.db"}, {"TARVEN_SUPPORT_DIR", "/old/s"}}},
         {"/old/s", "/old/x.db"}},
        {"an empty newer name hides the older one",
         {.variables = {{"OMBRIX_DB_PATH", ""},
                        {"TARVEN_DB_PATH", "/old/x.db"},
                        {"TARVEN_SUPPORT_DIR", "/old/s"}}},
         {"/old/s", "/old/s/ombrix.db"}},
        {"relative paths are the working directory's; nothing is resolved in them",
         {.dbPath = "../a//x.db", .supportDir = "~/b/"},
         {"/here/~/b", "/here/../a//x.db"}},
        {"a bare name", {.dbPath = "x.db"}, {"/here", "/here/x.db"}},
        {"in the root", {.dbPath = "/x.db"}, {"/", "/x.db"}},
    };
    for (const auto& [why, given, expected] : cases) {
        const auto location = resolve(given);
        EXPECT_EQ(location.supportDirectory, expected.supportDirectory) << why;
        EXPECT_EQ(location.databaseURL, expected.databaseURL) << why;
    }
}

TEST(OmbrixPaths, ALinkIntoABundleFollowsTheBundlesData) {
    const test::TestFolder folder;
    folder.write("Tools/Ombrix Dev.app/Contents/Info.plist", infoPlist);
    const std::string real =
        folder.write("Tools/Ombrix Dev.app/Contents/Helpers/deep/ombrix-cli", "");
    std::filesystem::create_directory(folder.at("bin"));
    std::filesystem::create_symlink(real, folder.at("bin/ombrix-cli"));
    EXPECT_EQ(resolve({.executable = folder.at("bin/ombrix-cli")}).supportDirectory,
              "/home/ilse/Library/Application Support/Ombrix Dev");
}

TEST(OmbrixPaths, WithoutANamingBundleTheNameIsOmbrix) {
    const test::TestFolder folder;
    folder.write("Outer.app/Contents/Info.plist", infoPlist);
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

TEST(OmbrixPaths, TheBundleIsReadOffThePathTheToolWasStartedBy) {
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
