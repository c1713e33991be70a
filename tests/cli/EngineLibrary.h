// A library of transcripts and ombrix-engine over it, as an agent drives it: ask, answer, look.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {

using Words = std::vector<std::string>;
using Tree = std::map<std::string, std::string>;

inline const std::string talk =
    "**Ana Ruiz:** Can you send me the price list by Friday?\n\n"
    "**Me:** I'll send you the price list on Friday.\n\n"
    "**Ana Ruiz:** Good. I run the launch, so write to ana@example.com.\n";

inline std::string transcript(const std::string& title, const std::string& day,
                              const std::string& turns, const std::string& more = "") {
    return "---\ntitle: " + title + "\ndate: " + day + "\nsource: Ombrix\nparticipants:\n" +
           "  - Ana Ruiz\n  - Dana Reyes\n" + more +
           "---\n\n## Notes\n\nMine.\n\n## Transcript\n\n" + turns;
}

inline std::string answer(const std::string& commitments = "", const std::string& facts = "",
                          const std::string& summary = "The list was promised.") {
    return R"({"version":1,"summary":")" + summary +
           R"(","notes":[{"topic":"Launch","bullets":["The list goes out on Friday."]}],)"
           R"("decisions":[],"open_questions":[],"commitments":[)" +
           commitments + R"(],"resolutions":[],"memory":[)" + facts +
           R"(],"unresolved_speakers":[],"not_sure":[]})";
}

inline const std::string promise =
    R"({"direction":"user_owes","who":"Ana Ruiz","who_key":"name:ana ruiz","what":"Send the price )"
    R"(list","quote":"I'll send you the price list on Friday.","speaker":"Me","due_raw":"Friday",)"
    R"("due":"2099-09-04","certainty":"recorded"})";
inline const std::string role =
    R"({"entity_key":"name:ana ruiz","kind":"person","fact":"Ana runs the launch.",)"
    R"("quote":"I run the launch","certainty":"recorded"})";

/// What no `give` takes for an answer, made of a good one, and what it is told.
inline std::vector<std::pair<std::string, const char*>> hostileShapes(const std::string& good) {
    std::string utf16 = "\xFF\xFE";
    for (const char c : good) (utf16 += c) += '\0';
    return {{good.substr(0, good.size() / 2), "cut off"},
            {"```json\n" + good + "\n```", "fence"},
            {"Here it is:\n" + good, "before the JSON"},
            {utf16, "UTF-16"},
            {"", "empty"},
            {std::string(100'000'000, ' '), "more than"}};
}

/// A library of its own, and the program over it.
class Library {
  public:
    explicit Library(const std::string& userName = "Dana Reyes") {
        disk_.write("support/config.json", R"({"output_folder_display_path": ")" + root() +
                                               R"(", "user_name": ")" + userName + "\"}");
        std::filesystem::create_directories(root());
    }
    std::string root() const { return disk_.at("library"); }
    const test::TestFolder& disk() const { return disk_; }
    void write(const std::string& name, const std::string& text) const {
        disk_.write("library/" + name, text);
    }
    std::string read(const std::string& name) const { return disk_.read("library/" + name); }

    Call call(Words arguments) const {
        arguments.insert(arguments.begin(), OMBRIX_ENGINE);
        arguments.insert(arguments.end(), {"--support-dir", disk_.at("support")});
        return callIn(disk_.path(), std::move(arguments));
    }
    Outcome run(Words arguments) const { return ToolTests::run(call(std::move(arguments))); }
    /// The `data` of a call that succeeds.
    Json::Value data(Words arguments) const {
        const Outcome outcome = run(std::move(arguments));
        EXPECT_EQ(outcome.status, 0) << outcome.output << outcome.errors;
        const auto envelope = Json::parse(outcome.output);
        return envelope.member("data") == nullptr ? Json::Value() : *envelope.member("data");
    }
    /// A member of what is asked. `step` is the line without "ask": {"prepare", "Launch"}.
    std::string asked(const Words& step, const char* member = "inputHash") const {
        Words line = step;
        line.insert(line.begin(), "ask");
        return *data(std::move(line)).member(member)->string();
    }
    std::string asked(const std::string& meeting, const char* member = "inputHash") const {
        return asked(Words{"land", meeting}, member);
    }
    /// The call that answers it.
    Call giving(const Words& step, const std::string& hash, const std::string& text,
                const Words& more = {}) const {
        disk_.write("answer.json", text);
        Words line = step;
        line.insert(line.begin(), "give");
        line.insert(line.end(), {"--input-hash", hash, "--model", "claude-sonnet-4-5", "--route",
                                 "ownKey", "--file", disk_.at("answer.json")});
        line.insert(line.end(), more.begin(), more.end());
        return call(std::move(line));
    }
    Call giving(const std::string& meeting, const std::string& hash, const std::string& text,
                const Words& more = {}) const {
        return giving(Words{"land", meeting}, hash, text, more);
    }
    Outcome give(const Words& step, const std::string& text) const {
        return ToolTests::run(giving(step, asked(step), text));
    }
    Outcome give(const std::string& meeting, const std::string& text) const {
        return give(Words{"land", meeting}, text);
    }
    /// The files a person or another program sees, without instants and caches.
    Tree tree() const {
        static const Regex instant(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ)");
        Tree files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root())) {
            const std::string name = entry.path().lexically_relative(root());
            if (!entry.is_regular_file() || name.starts_with(".ombrix/engine/")) continue;
            files[name] = instant.replacingAll(Files::bytes(entry.path()),
                                               [](const auto&) { return std::string("NOW"); });
        }
        return files;
    }
    std::string status() const { return run({"status"}).output; }

  private:
    test::TestFolder disk_;
};
}  // namespace ombrix::ToolTests
