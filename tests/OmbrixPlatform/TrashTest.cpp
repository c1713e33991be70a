#include "OmbrixPlatform/Trash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {

TEST(Trash, AMovedFileCanBeRestored) {
    const test::TestFolder home;  // both on one file system, which has one Trash
    const test::Variable homeVariable("HOME", home.path());
    const test::Variable data("XDG_DATA_HOME", home.at("data"));
    const std::string file = home.write("a folder/notes ü.txt", "kept");
    Trash::move(file);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(home.read("data/Trash/files/notes ü.txt"), "kept");
    EXPECT_THAT(home.read("data/Trash/info/notes ü.txt.trashinfo"),
                testing::HasSubstr("/a%20folder/notes%20%C3%BC.txt\n"));
}

TEST(Trash, AMissingFileIsReported) {
    const test::TestFolder folder;
    try {
        Trash::move(folder.at("nothing"));
        ADD_FAILURE();
    } catch (const Trash::Error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(folder.at("nothing")));
    }
}
}  // namespace ombrix
