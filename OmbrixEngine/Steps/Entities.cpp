#include "OmbrixEngine/Steps/Entities.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Entities {
namespace {

bool isKey(std::string_view text) {
    return text.starts_with(EntityKeys::namePrefix) || text.starts_with(EntityKeys::emailPrefix) ||
           text.starts_with(EntityKeys::threadPrefix);
}

/// What comes after "name:" and the like.
std::string_view ofKind(std::string_view key) { return key.substr(key.find(':') + 1); }

/// By canonical key, in lower case: the names that lead to it.
using Names = std::map<std::string, std::set<std::string>>;

Names knownNames(EngineWorkspace& workspace) {
    const auto& aliases = workspace.aliases();
    Names names;
    const auto add = [&](std::string_view key, std::string_view name) {
        if (EntityKeys::isGenericKey(key)) return;
        auto& known = names[Text::lowercased(aliases.canonical(Text::lowercased(key)))];
        if (!Text::trimmed(name).empty()) known.insert(Text::folded(Text::flattened(name)));
        known.insert(Text::folded(ofKind(key)));
    };
    for (const auto& file : workspace.memoryFiles()) {
        if (!file.declares) continue;
        add(file.key, file.title);
        add(file.key, file.path);
    }
    for (const auto& identity : aliases.identities())
        for (const auto& key : identity.allKeys()) add(key, identity.display);
    for (const auto& meeting : workspace.landed()) {
        for (const auto& participant : meeting.participants) {
            const bool isAddress = EntityKeys::isAddress(participant);
            const auto key = isAddress ? EntityKeys::normalizeKey({}, participant)
                                       : EntityKeys::normalizeKey(participant);
            if (key) add(*key, participant);
        }
        for (const auto& fact : meeting.output.memory) {
            std::string name(ofKind(fact.entityKey));
            if (fact.kind == LandMemoryFact::Kind::thread)
                name = Text::replacingAll(name, "-", " ");
            if (isKey(Text::lowercased(fact.entityKey))) add(fact.entityKey, name);
        }
        for (const auto& commitment : meeting.output.commitments)
            if (isKey(Text::lowercased(commitment.whoKey))) add(commitment.whoKey, commitment.who);
    }
    return names;
}

std::vector<std::string> matching(const Names& names,
                                  const std::function<bool(std::string_view)>& fits) {
    std::vector<std::string> keys;
    for (const auto& [key, known] : names)
        if (std::ranges::any_of(known, fits)) keys.push_back(key);
    return keys;
}

/// A key to call the entity by, without an address.
std::string shownKey(const PersonAliases& aliases, const std::string& key) {
    for (const auto& each : aliases.aliases(key))
        if (EntityKeys::forModel(each, {}).key == each) return each;
    return "a person known by an address alone";
}

CLIError several(std::string_view argument, const std::vector<std::string>& keys,
                 const PersonAliases& aliases) {
    constexpr std::size_t mostShown = 10;
    std::string list;
    for (std::size_t i = 0; i < std::min(keys.size(), mostShown); ++i)
        list += (i == 0 ? "" : ", ") + printable(shownKey(aliases, keys[i]));
    if (keys.size() > mostShown) list += " and others";
    return CLIError::invalidInput("'" + printable(argument) + "' may be one of " +
                                      std::to_string(keys.size()) + ": " + list + ".",
                                  "Name one of them by its key.");
}

}  // namespace

MemoryEntity ofKey(EngineWorkspace& workspace, std::string_view key) {
    auto entity = EntityInputs::entity(key, workspace.aliases(), workspace.landed());
    std::erase_if(entity.meetings, [&](const LandSidecar& meeting) {
        return workspace.isPrivate(meeting.meetingKey);
    });
    return entity;
}

MemoryEntity named(EngineWorkspace& workspace, std::string_view argument) {
    const std::string wanted = Text::folded(Text::flattened(argument));
    const Names names = knownNames(workspace);
    if (isKey(wanted)) {
        auto entity = ofKey(workspace, Text::flattened(argument));
        if (!entity.meetings.empty() || names.contains(entity.key)) return entity;
    } else if (!wanted.empty()) {
        const auto asWords = [](std::string_view text) { return " " + std::string(text) + " "; };
        const std::function<bool(std::string_view)> ways[] = {
            [&](std::string_view name) { return name == wanted; },
            [&](std::string_view name) { return Text::contains(asWords(name), asWords(wanted)); },
            [&](std::string_view name) { return Text::contains(name, wanted); },
        };
        for (const auto& fits : ways) {
            auto keys = matching(names, fits);
            // Whoever is private is found by a whole name, and not told of otherwise.
            if (&fits != &ways[0])
                std::erase_if(
                    keys, [&](const std::string& key) { return workspace.privacy().hides(key); });
            if (keys.size() == 1) return ofKey(workspace, keys.front());
            if (keys.size() > 1) throw several(argument, keys, workspace.aliases());
        }
    }
    throw CLIError::notFound("No person or thread is called '" + printable(argument) + "'.",
                             "ombrix-engine status lists them with their keys.");
}

const MemoryFileEntry* file(EngineWorkspace& workspace, const MemoryEntity& entity) {
    const MemoryFileEntry* found = nullptr;
    for (const auto& each : workspace.memoryFiles()) {
        if (!each.declares ||
            std::ranges::find(entity.keys, Text::lowercased(each.key)) == entity.keys.end())
            continue;
        if (each.parsed) return &each;
        if (found == nullptr) found = &each;
    }
    return found;
}

std::optional<MemoryFile::Parsed> contents(const MemoryFileEntry* file) {
    if (file == nullptr) return std::nullopt;
    if (file->parsed) return file->parsed;
    const auto region = EngineRegion::parse(file->text);
    if (!region) return std::nullopt;
    return MemoryFile::Parsed{.engineText = region->content, .corrections = file->corrections};
}

bool isPrivate(EngineWorkspace& workspace, const MemoryEntity& entity) {
    const auto& privacy = workspace.privacy();
    return std::ranges::any_of(entity.keys, [&](const auto& key) { return privacy.hides(key); }) ||
           (entity.kind == LandMemoryFact::Kind::person && privacy.hidesName(entity.display));
}

void requirePublic(EngineWorkspace& workspace, const MemoryEntity& entity) {
    if (!isPrivate(workspace, entity)) return;
    throw CLIError::invalidInput("'" + printable(title(entity)) +
                                     "' is private, as the corrections in the memory file say. No "
                                     "model is asked about it.",
                                 "Leave it to the person whose library this is.");
}

FollowUpRows openRows(EngineWorkspace& workspace, std::span<const MemoryEntity> entities) {
    const auto& privacy = workspace.privacy();
    const auto ledger = workspace.publicLedger(workspace.landed(), workspace.today());
    auto rows = EntityInputs::openRows(entities, ledger);
    std::erase_if(rows, [&](const FollowUpRow& row) {
        return privacy.hides(row.whoKey) || privacy.hidesName(row.who);
    });
    // What an answer copies must be found in the input again.
    for (auto& row : rows) row.sourceTitle = privacy.cleanedText(row.sourceTitle);
    return rows;
}

std::string title(const MemoryEntity& entity) {
    return entity.display.empty() ? std::string(ofKind(entity.key)) : entity.display;
}
}  // namespace ombrix::Entities
