#include "OmbrixPlatform/Files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "OmbrixPlatform/ProcessLimit.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using test::ProcessLimit;
using testing::UnorderedElementsAre;

/// The superuser ignores permissions, so become the user "nobody" for a while.
class Nobody {
  public:
    Nobody() : was_(::geteuid()) {
        if (was_ == 0) {
            EXPECT_EQ(::seteuid(65534), 0);
        }
    }
    ~Nobody() { EXPECT_EQ(::seteuid(was_), 0); }
    Nobody(const Nobody&) = delete;
    Nobody& operator=(const Nobody&) = delete;

  private:
    uid_t was_;
};

std::vector<std::string> walked(const test::TestFolder& folder, const std::string& from) {
    std::vector<std::string> found;
    Files::walk(from, [&](const std::string& path) {
        EXPECT_TRUE(path.starts_with(from)) << path;
        found.push_back(path.substr(folder.path().size() + 1));
    });
    return found;
}

std::vector<std::string> names(const std::string& folder) {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        found.push_back(entry.path().filename());
    return found;
}

mode_t permissions(const std::string& path) {
    struct stat facts {};
    EXPECT_EQ(::stat(path.c_str(), &facts), 0);
    return facts.st_mode & 07777U;
}

TEST(Files, OnlyRegularFilesAreRead) {
    const test::TestFolder folder;
    ::mkfifo(folder.at("pipe.md").c_str(), 0666);
    ::mkdir(folder.at("folder.md").c_str(), 0777);
    std::filesystem::create_symlink("loop.md", folder.at("loop.md"));
    std::filesystem::create_symlink("gone", folder.at("dangling.md"));
    std::filesystem::create_symlink("/dev/zero", folder.at("device.md"));
    Files::Reader reader;
    for (const char* name : {"pipe.md", "folder.md", "loop.md", "dangling.md", "device.md",
                             "missing.md", "pipe.md/below"}) {
        EXPECT_FALSE(reader.read(folder.at(name))) << name;
        EXPECT_FALSE(Files::text(folder.at(name))) << name;
        try {
            Files::bytes(folder.at(name));
            ADD_FAILURE() << name;
        } catch (const Files::Error& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(folder.at(name)));
            EXPECT_NE(error.code().value(), 0);
        }
    }
}

TEST(Files, WhatMayNotBeReadIsNotThere) {
    const test::TestFolder folder;
    folder.write("secret.md", "x");
    folder.write("closed/inside.md", "x");
    folder.write("open.md", "x");
    ::chmod(folder.path().c_str(), 0755);
    ::chmod(folder.at("secret.md").c_str(), 0);
    ::chmod(folder.at("closed").c_str(), 0);
    {
        const Nobody nobody;
        Files::Reader reader;
        EXPECT_FALSE(reader.read(folder.at("secret.md")));
        EXPECT_TRUE(reader.read(folder.at("open.md")));
        EXPECT_THROW(Files::bytes(folder.at("secret.md")), Files::Error);
        EXPECT_THAT(walked(folder, folder.path()), UnorderedElementsAre("secret.md", "open.md"));
        EXPECT_THROW(walked(folder, folder.at("closed")), Files::Error);
    }
    ::chmod(folder.at("closed").c_str(), 0755);
}

TEST(Files, TextIsValidUtf8) {
    const test::TestFolder folder;
    EXPECT_EQ(Files::text(folder.write("a", "caf\u00E9\r\n")), "caf\u00E9\r\n");
    EXPECT_EQ(Files::text(folder.write("c", "caf\xE9")), std::nullopt);
}

TEST(Files, AReaderReadsOneFileAfterTheOther) {
    const test::TestFolder folder;
    const std::string big(300'000, 'b');
    folder.write("big", big);
    folder.write("small", "small");
    folder.write("empty", "");
    std::filesystem::create_symlink("small", folder.at("link"));
    Files::Reader reader;
    EXPECT_EQ(reader.read(folder.at("small")), "small");
    EXPECT_EQ(reader.read(folder.at("big")), big);
    EXPECT_EQ(reader.read(folder.at("link")), "small") << "nothing of the longer file is left";
    EXPECT_EQ(reader.beginning(folder.at("big"), 7), "bbbbbbb");
    EXPECT_EQ(reader.beginning(folder.at("big"), 0), "");
    EXPECT_EQ(reader.read(folder.at("small"), 5), "small");
    EXPECT_FALSE(reader.read(folder.at("small"), 4));
    EXPECT_EQ(Files::text(folder.at("small"), 5), "small");
    EXPECT_FALSE(Files::text(folder.at("small"), 4));
    EXPECT_EQ(reader.read(folder.at("empty")), "");
}

TEST(Files, WhatAWalkSawIsReadAsAnythingElse) {
    const test::TestFolder folder;
    folder.write("a.md", std::string(5000, 'a'));
    folder.write("x/b.md", "b");
    folder.write("x/empty.md", "");
    std::filesystem::create_symlink("b.md", folder.at("x/link.md"));
    std::filesystem::create_symlink("../gone", folder.at("x/dangling.md"));
    ::mkfifo(folder.at("x/pipe.md").c_str(), 0666);
    std::vector<std::string> paths;
    const auto add = [&](std::string path) { paths.push_back(std::move(path)); };
    Files::walk(folder.path(), add, Files::Seen::regularFiles);
    EXPECT_EQ(paths.size(), 4U) << "not the pipe";
    // Also what changed since the walk, and from one folder to the other and back.
    for (const char* name : {"x/pipe.md", "x", "a.md", "x/dangling.md", "y/c.md"})
        paths.push_back(folder.at(name));
    Files::Reader walked(Files::From::walk), plain;
    for (const auto& path : paths) {
        const auto copy = [](std::optional<std::string_view> bytes) {
            return bytes ? std::optional(std::string(*bytes)) : std::nullopt;
        };
        EXPECT_EQ(copy(walked.read(path, 4999)), copy(plain.read(path, 4999))) << path;
        EXPECT_EQ(copy(walked.read(path)), copy(plain.read(path))) << path;
        if (path == folder.at("x/pipe.md")) continue;  // empty, or nothing
        EXPECT_EQ(copy(walked.beginning(path, 3)), copy(plain.beginning(path, 3))) << path;
    }
}

TEST(Files, LinesAreReadPieceByPiece) {
    const test::TestFolder folder;
    const auto linesOf = [](const std::string& path) {
        std::vector<std::string> lines;
        Files::forEachLine(path, [&](std::string_view line) { lines.emplace_back(line); });
        return lines;
    };
    EXPECT_THAT(linesOf(folder.path()), testing::IsEmpty());
    EXPECT_THAT(linesOf(folder.write("empty", "")), testing::IsEmpty());
    EXPECT_THAT(linesOf(folder.write("short", "a\n\r\n\nb")),
                testing::ElementsAre("a", "\r", "", "b"));
    // A piece is a mebibyte: lines that end with it, begin with it, and are longer than it.
    std::vector<std::string> lines;
    for (const int size : {1048575, 0, 1048574, 1, 3000000, 5, 1048576, 7}) {
        lines.emplace_back(static_cast<std::size_t>(size), static_cast<char>('a' + lines.size()));
    }
    std::string file;
    for (const std::string& line : lines) file += line + "\n";
    EXPECT_TRUE(linesOf(folder.write("long", file)) == lines);
}

TEST(Files, AWalkSeesEveryFileBelowOnce) {
    const test::TestFolder folder;
    for (const char* name :
         {"a.md", "x/b.md", "x/y/c", "x/new\nline.md", ".hidden", ".git/config",
          "x/.ombrix/side.json", "x/caf\u00E9.md", "outside/z.md", "x/bad\xFF"}) {
        folder.write(name, "");
    }
    std::filesystem::create_symlink("../outside", folder.at("x/linked-folder"));
    std::filesystem::create_symlink("..", folder.at("x/up"));
    std::filesystem::create_symlink("b.md", folder.at("x/linked-file"));
    std::filesystem::create_symlink("loop", folder.at("x/loop"));
    ::mkfifo(folder.at("x/pipe.md").c_str(), 0666);
    EXPECT_THAT(walked(folder, folder.path()),
                UnorderedElementsAre("a.md", "x/b.md", "x/y/c", "x/new\nline.md", "x/caf\u00E9.md",
                                     "x/bad\xFF", "x/linked-file", "x/pipe.md", "outside/z.md"));
    EXPECT_THAT(walked(folder, folder.at("x/linked-folder")),
                UnorderedElementsAre("x/linked-folder/z.md"))
        << "the folder asked for may be a link itself";
    for (const char* name : {"missing", "a.md"})
        EXPECT_THROW(walked(folder, folder.at(name)), Files::Error) << name;
}

TEST(Files, AShortageIsNoMissingFile) {
    const test::TestFolder folder;
    folder.write("a.md", "x");
    // The sanitizers look at the first error of a type through a pipe, which needs descriptors.
    EXPECT_THROW(walked(folder, folder.at("missing")), Files::Error);
    const int opened = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(opened);
    const ProcessLimit descriptors(RLIMIT_NOFILE, static_cast<rlim_t>(opened));  // not one more
    Files::Reader reader;
    EXPECT_THROW(reader.read(folder.at("a.md")), Files::Error);
    EXPECT_THROW(Files::Reader(Files::From::walk).read(folder.at("a.md")), Files::Error);
    EXPECT_THROW(Files::text(folder.at("a.md")), Files::Error);
    EXPECT_THROW(walked(folder, folder.path()), Files::Error);
}

TEST(Files, PathsTooLongForOneCallAreWalkedAndRead) {
    const test::TestFolder folder;
    const std::string name(250, 'n');
    std::string path = folder.path();
    int place = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 100; ++depth) {
        ::mkdirat(place, name.c_str(), 0755);
        const int next = ::openat(place, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(std::exchange(place, next));
        path += "/" + name;
    }
    const int file = ::openat(place, "f.md", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    EXPECT_EQ(::write(file, "deep", 4), 4);
    ::close(file);
    ::close(place);
    EXPECT_THAT(walked(folder, folder.path()).size(), 1U);
    EXPECT_EQ(Files::text(path + "/f.md"), "deep");
    EXPECT_FALSE(Files::text(path + "/missing.md"));
    EXPECT_TRUE(Files::isDirectory(path));
}

TEST(Files, AWalkGoesDeeperThanItMayOpenFolders) {
    const test::TestFolder folder;
    std::string path = folder.path();
    for (int depth = 0; depth < 100; ++depth) path += "/d";
    std::filesystem::create_directories(path);
    Files::writeAtomically(path + "/f", "deep");
    const ProcessLimit descriptors(RLIMIT_NOFILE, 50);
    EXPECT_EQ(walked(folder, folder.path()).size(), 1U);
}

TEST(Files, AWriteReplacesTheWholeFileAndKeepsWhatItIs) {
    const test::TestFolder folder;
    const std::string file = folder.write("a.md", "old and longer");
    ::chmod(file.c_str(), 0640);
    Files::writeAtomically(file, "new");
    EXPECT_EQ(folder.read("a.md"), "new");
    EXPECT_EQ(permissions(file), 0640U);
    std::filesystem::create_directory(folder.at("elsewhere"));
    std::filesystem::create_symlink("../a.md", folder.at("elsewhere/link.md"));
    Files::writeAtomically(folder.at("elsewhere/link.md"), "through");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.at("elsewhere/link.md")));
    EXPECT_EQ(folder.read("a.md"), "through");
    const std::string longName = folder.at(std::string(255, 'n'));
    Files::writeAtomically(longName, std::string("\0\xFF", 2));
    EXPECT_EQ(Files::bytes(longName), std::string("\0\xFF", 2));
    EXPECT_THAT(names(folder.path()),
                UnorderedElementsAre("a.md", "elsewhere", std::string(255, 'n')));
    EXPECT_THAT(names(folder.at("elsewhere")), UnorderedElementsAre("link.md"));
    const mode_t mask = ::umask(027);
    Files::writeAtomically(folder.at("fresh"), "");
    ::umask(mask);
    EXPECT_EQ(permissions(folder.at("fresh")), 0640U);
}

TEST(Files, AFailedWriteLeavesEverythingAsItWas) {
    const test::TestFolder folder;
    const std::string file = folder.write("a.md", "old");
    {
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const ProcessLimit fullDisk(RLIMIT_FSIZE, 4096);
        EXPECT_THROW(Files::writeAtomically(file, std::string(10'000, 'x')), Files::Error);
        std::signal(SIGXFSZ, handler);
    }
    ::mkdir(folder.at("folder").c_str(), 0777);
    EXPECT_THROW(Files::writeAtomically(folder.at("folder"), "x"), Files::Error);
    EXPECT_THROW(Files::writeAtomically(folder.at("missing/a"), "x"), Files::Error);
    ::chmod(folder.path().c_str(), 0555);
    {
        const Nobody nobody;
        EXPECT_THROW(Files::writeAtomically(file, "new"), Files::Error);
        EXPECT_FALSE(Files::remove(file));
    }
    ::chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(folder.read("a.md"), "old");
    EXPECT_THAT(names(folder.path()), UnorderedElementsAre("a.md", "folder"));
}

TEST(Files, FoldersAreMadeAndFilesRemoved) {
    const test::TestFolder folder;
    Files::createDirectories(folder.at("a/b/c/"));
    EXPECT_TRUE(Files::isDirectory(folder.at("a/b/c")));
    const std::string file = folder.write("a/f", "");
    EXPECT_THROW(Files::createDirectories(file), Files::Error);
    EXPECT_TRUE(Files::exists(file));
    EXPECT_FALSE(Files::isDirectory(file));
    EXPECT_TRUE(Files::remove(file));
    EXPECT_FALSE(Files::remove(file));
    EXPECT_FALSE(Files::remove(folder.at("a")));
}

TEST(Files, APathWithAZeroByteIsNotCutThere) {
    const test::TestFolder folder;
    const std::string file = folder.write("a", "kept");
    const std::string cut = file + std::string("\0b", 2);
    EXPECT_FALSE(Files::exists(cut));
    EXPECT_FALSE(Files::text(cut));
    EXPECT_THROW(Files::bytes(cut), Files::Error);
    EXPECT_THROW(Files::writeAtomically(cut, "lost"), Files::Error);
    EXPECT_FALSE(Files::remove(cut));
    EXPECT_EQ(Files::bytes(file), "kept");
}

TEST(Files, HomeComesFromTheUserDatabase) {
    const test::Variable home("HOME", "/nowhere");
    EXPECT_NE(Files::homeDirectory(), "/nowhere");
    EXPECT_TRUE(Files::homeDirectory().starts_with('/'));
}
}  // namespace
}  // namespace ombrix
