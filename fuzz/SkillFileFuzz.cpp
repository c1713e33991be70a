// Any bytes as SKILL.md: what is read comes back as it was, and each change reads back.
//
// libFuzzer: -dict=fuzz/yaml.dict
#include <string>
#include <utility>
#include <variant>

#include "Law.h"
#include "OmbrixMemoryKit/Skills/SkillFile.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

std::variant<Skill, SkillProblem> parse(std::string_view text) {
    return SkillFile::parse(text, SkillOrigin::yours, Instant());
}

/// What the text means, beside its form.
Skill meaning(std::string_view text) {
    const auto result = parse(text);
    law(std::holds_alternative<Skill>(result), "what is written is a skill");
    Skill skill = std::get<Skill>(result);
    skill.source.reset();
    return skill;
}

void checkChange(const Skill& before, void (*change)(Skill&), const char* claim) {
    Skill changed = before;
    change(changed);
    changed.runnable = !changed.prompt.empty();
    const std::string text = SkillFile::rewrite(changed, *before.source);
    changed.source.reset();
    law(meaning(text) == changed, claim);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    const auto result = parse(text);
    if (const auto* problem = std::get_if<SkillProblem>(&result)) {
        law(!problem->reason.empty(), "a problem has a reason");
        return 0;
    }
    const Skill& skill = std::get<Skill>(result);
    law(SkillFile::rewrite(skill, *skill.source) == text, "nothing changed, the same bytes");
    Skill written = meaning(SkillFile::serialize(skill));
    written.source = skill.source;
    // The line ends of a text with a CR depend on all others.
    if (Text::contains(text, "\r")) return 0;
    law(written == skill, "a new file means the same");
    checkChange(
        skill, [](Skill& each) { each.name = "new"; }, "a new name is read");
    checkChange(
        skill, [](Skill& each) { each.description = "- new: #1"; }, "a new description is read");
    checkChange(
        skill, [](Skill& each) { each.prompt = "New\n\nprompt."; }, "a new prompt is read");
    checkChange(
        skill, [](Skill& each) { each.prompt.clear(); }, "no prompt is read");
    checkChange(
        skill,
        [](Skill& each) {
            each.output = each.output == SkillOutput::post ? SkillOutput::doc : SkillOutput::post;
        },
        "a new output is read");
    return 0;
}
