// The skills a user can run: those that come with the system, and the user's own. A library is a
// value: a change returns a new one, which the caller saves.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Skills/Skill.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

/// A skill as a user writes it.
struct SkillDraft {
    std::string title, description, prompt;
    SkillOutput output = SkillOutput::doc;
    bool operator==(const SkillDraft&) const = default;
};

/// What changes of a skill.
struct SkillPatch {
    std::optional<std::string> title{}, description{}, prompt{};
    std::optional<SkillOutput> output{};
    bool operator==(const SkillPatch&) const = default;
};

struct SkillLibrary {
    using Names = std::set<std::string, std::less<>>;
    /// A skill's ask: "/name request".
    struct Asked {
        Skill skill;
        std::string request;  ///< trimmed; may be empty
        bool operator==(const Asked&) const = default;
    };

    /// By the name of a built-in skill whether it is in the user's list. Without an entry it is
    /// not.
    std::map<std::string, bool, std::less<>> added{};
    std::vector<Skill> own{};  ///< the user's own skills

    /// With a built-in skill in the user's list, or not.
    SkillLibrary addingBuiltIn(std::string_view name, bool isAdded) const;

    /// The built-in skills in the user's list, in their order, then the user's own.
    std::vector<Skill> yours() const;
    /// All built-in skills, then the user's own.
    std::vector<Skill> offered() const;
    /// The first one offered with exactly that name.
    std::optional<Skill> skill(std::string_view named) const;

    /// The skill and the request of "/name request", trimmed and in any case. Nothing for another
    /// text and for a name that no skill has.
    std::optional<Asked> asked(std::string_view text) const;
    /// "/name request"; "/name" for a blank request.
    static std::string ask(std::string_view name, std::string_view request);

    /// With a new skill of the user's at the end, named after its title. The name is not in use
    /// here and not in `alsoTaken`. A blank description becomes what the prompt says first.
    SkillLibrary creating(const SkillDraft& draft, Instant at, const Names& alsoTaken = {}) const;

    /// With the user's first skill of that name changed and edited at that time. Of a changed title
    /// it gets a new name, as in `creating`, unless the title still gives the old one. It keeps its
    /// source. The same library when the user has no such skill.
    SkillLibrary editing(std::string_view name, const SkillPatch& patch, Instant at,
                         const Names& alsoTaken = {}) const;

    /// With a skill more of the user's, whatever its name.
    SkillLibrary adding(Skill skill) const;
    /// Without the user's skills of that name.
    SkillLibrary deleting(std::string_view name) const;

    /// The names of all skills offered, without `except`.
    Names namesInUse(const std::optional<std::string>& except = std::nullopt) const;

    bool operator==(const SkillLibrary&) const = default;
};
}  // namespace ombrix
