#include "OmbrixMemoryKit/Skills/SkillLibrary.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Skills/BuiltinSkills.h"
#include "OmbrixMemoryKit/Skills/SkillTitle.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

bool isNameCharacter(char c) { return Text::isAsciiAlphanumeric(c) || c == '-'; }

/// The name for a title that neither the names nor `alsoTaken` have.
std::string freeName(std::string_view title, SkillLibrary::Names names,
                     const SkillLibrary::Names& alsoTaken) {
    names.insert(alsoTaken.begin(), alsoTaken.end());
    return SkillFile::uniqueName(SkillFile::name(title), names);
}

/// After a change: what follows from the other fields.
void settle(Skill& skill, Instant editedAt) {
    if (Text::trimmed(skill.description).empty()) skill.description = SkillFile::description(skill);
    skill.runnable = !Text::trimmed(skill.prompt).empty();
    skill.editedAt = editedAt;
}
}  // namespace

SkillLibrary SkillLibrary::addingBuiltIn(std::string_view name, bool isAdded) const {
    SkillLibrary changed = *this;
    changed.added.insert_or_assign(std::string(name), isAdded);
    return changed;
}

std::vector<Skill> SkillLibrary::yours() const {
    std::vector<Skill> yours;
    for (const Skill& skill : BuiltinSkills::skills()) {
        const auto entry = added.find(skill.name);
        if (entry != added.end() && entry->second) yours.push_back(skill);
    }
    yours.insert(yours.end(), own.begin(), own.end());
    return yours;
}

std::vector<Skill> SkillLibrary::offered() const {
    std::vector<Skill> offered = BuiltinSkills::skills();
    offered.insert(offered.end(), own.begin(), own.end());
    return offered;
}

std::optional<Skill> SkillLibrary::skill(std::string_view named) const {
    for (const auto* skills : {&BuiltinSkills::skills(), &own}) {
        const auto found = std::ranges::find(*skills, named, &Skill::name);
        if (found != skills->end()) return *found;
    }
    return std::nullopt;
}

std::optional<SkillLibrary::Asked> SkillLibrary::asked(std::string_view text) const {
    text = Text::trimmed(text);
    if (!text.starts_with('/')) return std::nullopt;
    text.remove_prefix(1);
    const auto end = std::ranges::find_if_not(text, isNameCharacter) - text.begin();
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end));
    const std::string_view rest = text.substr(name.size());
    const std::string_view request = Text::trimmed(rest);
    // The trimmed text ends in no white space, so a request that lost some begins with it.
    if (!rest.empty() && request.size() == rest.size()) return std::nullopt;
    auto found = skill(Text::lowercased(name));
    if (!found) return std::nullopt;
    return Asked{.skill = std::move(*found), .request = std::string(request)};
}

std::string SkillLibrary::ask(std::string_view name, std::string_view request) {
    const std::string_view trimmed = Text::trimmed(request);
    std::string ask = SkillFile::command(name);
    if (!trimmed.empty()) (ask += ' ') += trimmed;
    return ask;
}

SkillLibrary SkillLibrary::creating(const SkillDraft& draft, Instant at,
                                    const Names& alsoTaken) const {
    Skill skill{.name = freeName(draft.title, namesInUse(), alsoTaken),
                .description = draft.description,
                .prompt = draft.prompt,
                .output = draft.output,
                .origin = SkillOrigin::yours};
    settle(skill, at);
    return adding(std::move(skill));
}

SkillLibrary SkillLibrary::editing(std::string_view name, const SkillPatch& patch, Instant at,
                                   const Names& alsoTaken) const {
    SkillLibrary changed = *this;
    const auto skill = std::ranges::find(changed.own, name, &Skill::name);
    if (skill == changed.own.end()) return changed;
    if (patch.title && SkillFile::name(*patch.title) != name)
        skill->name = freeName(*patch.title, namesInUse(std::string(name)), alsoTaken);
    if (patch.description) skill->description = *patch.description;
    if (patch.prompt) skill->prompt = *patch.prompt;
    if (patch.output) skill->output = *patch.output;
    settle(*skill, at);
    return changed;
}

SkillLibrary SkillLibrary::adding(Skill skill) const {
    SkillLibrary changed = *this;
    changed.own.push_back(std::move(skill));
    return changed;
}

SkillLibrary SkillLibrary::deleting(std::string_view name) const {
    SkillLibrary changed = *this;
    std::erase_if(changed.own, [&](const Skill& skill) { return skill.name == name; });
    return changed;
}

SkillLibrary::Names SkillLibrary::namesInUse(const std::optional<std::string>& except) const {
    Names names;
    for (const auto* skills : {&BuiltinSkills::skills(), &own})
        for (const Skill& skill : *skills)
            if (skill.name != except) names.insert(skill.name);
    return names;
}
}  // namespace ombrix
