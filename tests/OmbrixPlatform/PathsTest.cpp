#include "OmbrixPlatform/Paths.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

TEST(Paths, ComeApart) {
    const struct {
        const char *path, *parent, *name, *extension;
    } cases[] = {
        {"/a/b.md", "/a", "b.md", "md"},
        {"/a/b/", "/a", "b", ""},
        {"/a", "/", "a", ""},
        {"/", "/", "", ""},
        {"", "", "", ""},
        {"a//b", "a", "b", ""},
        {"//a", "/", "a", ""},
        {"a.tar.md", "", "a.tar.md", "md"},
        {".md", "", ".md", ""},
        {"a.", "", "a.", ""},
        {"a.MD/", "", "a.MD", "MD"},
    };
    for (const auto& [path, parent, name, extension] : cases) {
        EXPECT_EQ(Paths::parent(path), parent) << path;
        EXPECT_EQ(Paths::lastComponent(path), name) << path;
        EXPECT_EQ(Paths::extension(path), extension) << path;
    }
    EXPECT_EQ(Paths::components("//a/./b/"), (std::vector<std::string_view>{"a", ".", "b"}));
}

TEST(Paths, AreStandardisedByTextAlone) {
    const struct {
        const char *path, *absolute, *standardised;
    } cases[] = {
        {"/a/./b//../c/", "/a/./b//../c", "/a/c"},
        {"../x", "/w/d/../x", "/w/x"},
        {"../../../../x", "/w/d/../../../../x", "/x"},
        {"", "/w/d", "/w/d"},
        {"...", "/w/d/...", "/w/d/..."},
        {"~/x", "/w/d/~/x", "/w/d/~/x"},
    };
    for (const auto& [path, absolute, standardised] : cases) {
        EXPECT_EQ(Paths::absolute(path, "/w/d"), absolute) << path;
        EXPECT_EQ(Paths::standardised(path, "/w/d"), standardised) << path;
        EXPECT_EQ(Paths::standardised(standardised, "/elsewhere"), standardised);
    }
}

TEST(Paths, JoinAndExpand) {
    EXPECT_EQ(Paths::joined("/a/", "b"), "/a/b");
    EXPECT_EQ(Paths::joined("/", "b"), "/b");
    EXPECT_EQ(Paths::joined("", "b"), "b");
    EXPECT_EQ(Paths::expandingTilde("~", "/home/ann"), "/home/ann");
    EXPECT_EQ(Paths::expandingTilde("~/x", "/home/ann"), "/home/ann/x");
    for (const char* path : {"~bob/x", "/a/~", ""})
        EXPECT_EQ(Paths::expandingTilde(path, "/home/ann"), path);
}
}  // namespace
}  // namespace ombrix
