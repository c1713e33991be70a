#include "OmbrixMemoryKit/Skills/BuiltinSkills.h"

#include <array>
#include <variant>

#include "OmbrixMemoryKit/Skills/SkillFile.h"
#include "embedded/OmbrixMemoryKit/skills/follow-up-email/SKILL.md.h"
#include "embedded/OmbrixMemoryKit/skills/next-meeting/SKILL.md.h"
#include "embedded/OmbrixMemoryKit/skills/prep-for-a-1-on-1/SKILL.md.h"
#include "embedded/OmbrixMemoryKit/skills/slack-recap/SKILL.md.h"
#include "embedded/OmbrixMemoryKit/skills/weekly-update/SKILL.md.h"
#include "embedded/OmbrixMemoryKit/skills/write-prompt/SKILL.md.h"

namespace ombrix::BuiltinSkills {
namespace {

using namespace Embedded::OmbrixMemoryKit;

constexpr auto all = std::to_array<File>({
    {"slack-recap", skillsSlackRecapSKILLMd},
    {"follow-up-email", skillsFollowUpEmailSKILLMd},
    {"next-meeting", skillsNextMeetingSKILLMd},
    {"write-prompt", skillsWritePromptSKILLMd},
    {"weekly-update", skillsWeeklyUpdateSKILLMd},
    {"prep-for-a-1-on-1", skillsPrepForA1On1SKILLMd},
});

std::vector<Skill> parsed() {
    std::vector<Skill> skills;
    for (const File& file : all)
        skills.push_back(
            std::get<Skill>(SkillFile::parse(file.text, SkillOrigin::builtin, Instant())));
    return skills;
}
}  // namespace

std::span<const File> files() { return all; }

const std::vector<Skill>& skills() {
    static const std::vector<Skill> skills = parsed();
    return skills;
}
}  // namespace ombrix::BuiltinSkills
