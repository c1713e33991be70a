#include "OmbrixPlatform/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {

TEST(Process, UniqueStringsDifferAlsoBetweenProcesses) {
    const std::string one = Process::uniqueString();
    EXPECT_THAT(one, testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB]"
                                           "[0-9A-F]{3}-[0-9A-F]{12}"));
    EXPECT_NE(one, Process::uniqueString());
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string unique = Process::uniqueString();
        ::_exit(::write(ends[1], unique.data(), unique.size()) == 36 ? 0 : 1);
    }
    ::waitpid(child, nullptr, 0);
    std::string other(36, ' ');
    ASSERT_EQ(::read(ends[0], other.data(), other.size()), 36);
    EXPECT_NE(other, Process::uniqueString());
}

TEST(Process, AnEmptyVariableIsSet) {
    const test::Variable empty("OMBRIX_TEST_VARIABLE", "");
    EXPECT_EQ(Process::environment("OMBRIX_TEST_VARIABLE"), "");
    const test::Variable unset("OMBRIX_TEST_VARIABLE", std::nullopt);
    EXPECT_EQ(Process::environment("OMBRIX_TEST_VARIABLE"), std::nullopt);
}

TEST(Process, TheExecutableIsThisProgramWhateverItWasCalledBy) {
    const auto executable = Process::executable();
    ASSERT_TRUE(executable);
    EXPECT_THAT(*executable, testing::StartsWith("/"));
    EXPECT_TRUE(std::filesystem::equivalent(*executable, "/proc/self/exe"));
}
}  // namespace ombrix
