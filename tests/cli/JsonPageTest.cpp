#include "JsonPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix::ToolTests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// `run` holds every output to the page. This holds the page to the outputs that cases expect.
TEST(JsonPage, ItsFieldsAllOccurInTheCasesAndThoseThatMayBeAbsentAreAbsentInSome) {
    JsonPage page(OMBRIX_JSON_PAGE);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(OMBRIX_CASES)) {
        if (entry.path().filename() != "stdout") continue;
        const auto envelope = JsonPage::envelopeIn(Files::bytes(entry.path().string()));
        if (envelope) {
            EXPECT_THAT(page.problems(*envelope), IsEmpty()) << entry.path();
        }
    }
    auto unseen = page.unseen();
    std::erase_if(unseen, [](const auto& each) { return !each.starts_with("ombrix-cli"); });
    // Only a tool inside an application bundle prints it.
    EXPECT_THAT(unseen, ElementsAre("ombrix-cli info.appBundlePath never occurs"));
}

TEST(JsonPage, NamesEachDifference) {
    const test::TestFolder folder;
    const std::string rows =
        "## Success\n| `ok` | boolean | always | |\n| `command` | string | always | |\n"
        "| `data` | any | always | |\n## `o list`, `o get`, `o`\n| `[].id` | integer | always | |\n"
        "| `[].state` | \"open\", \"done\" | if known | |\n| `[].of` | map of list of string | if "
        "known | |\n## Item\n| `id` | integer | always | |\n## `p`\nThe fields of *Item*.\n"
        "| `of` | list of object | always | the fields of *Item* |\n";
    JsonPage page(folder.write("page.md", rows));
    const auto problems = [&page](const std::string& command, const std::string& data) {
        return page.problems(
            Json::parse(R"({"ok": true, "command": ")" + command + R"(", "data": )" + data + "}"));
    };
    EXPECT_THAT(problems("o get", R"([{"id": 1}, {"id": 2, "state": "done", "of": {"a": ["b"]}}])"),
                IsEmpty());
    EXPECT_THAT(problems("o list", R"([{"id": 1.5}])"),
                ElementsAre("data[].id: not of the type on the page"));
    EXPECT_THAT(problems("o list", R"([{"state": "gone", "new": 1}])"),
                ElementsAre("data[].new: not on the page", "data[].id: missing",
                            "data[].state: not of the type on the page"));
    EXPECT_THAT(problems("o list", R"([{"id": 1, "of": {"a": [2]}}])"),
                ElementsAre("data[].of.a[]: not of the type on the page"));
    EXPECT_THAT(problems("o list", R"({"id": 1})"),
                ElementsAre("data: not of the type on the page"));
    EXPECT_THAT(problems("o put", "1"), ElementsAre("\"o put\" is not on the page"));
    EXPECT_THAT(problems("p", R"({"id": 1, "of": [{"id": 2}, {}]})"),
                ElementsAre("data.of[].id: missing"));
    EXPECT_THAT(problems("other put", "1"), IsEmpty());
}
}  // namespace
}  // namespace ombrix::ToolTests
