#include "OmbrixPlatform/AbandonedFiles.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TemporaryName.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

namespace fs = std::filesystem;

TEST(AbandonedFiles, OnlyOldFilesOfDeadProcessesAreRemoved) {
    const test::TestFolder folder;
    const auto leave = [&](const std::string& path, int hours) {
        folder.write(path.substr(folder.path().size() + 1), "half");
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(hours));
        return path;
    };
    const auto name = [&] { return TemporaryName::in(folder.path()); };
    leave(name(), 3);
    leave(name(), 3);
    leave(name(), 0);
    const std::string writing = leave(name(), 3);
    leave(Text::lowercased(name().substr(folder.path().size())).insert(0, folder.path()), 3);
    leave(name() + "x", 3);
    fs::create_hard_link(leave(folder.at("mine"), 3), name());
    fs::create_symlink(folder.at("mine"), name());
    fs::create_directory(name());
    const int writer = ::open(writing.c_str(), O_WRONLY);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    EXPECT_EQ(AbandonedFiles::remove(folder.path(), std::chrono::hours(1)), 2U);
    ::close(writer);
    EXPECT_EQ(AbandonedFiles::remove(folder.path(), std::chrono::hours(1)), 1U);
    EXPECT_EQ(Files::names(folder.path()).size(), 7U);
    EXPECT_EQ(AbandonedFiles::remove(folder.at("none"), std::chrono::hours(1)), 0U);
}
}  // namespace
}  // namespace ombrix
