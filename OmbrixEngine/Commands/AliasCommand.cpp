#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Steps/FollowUps.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/AliasRing.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr const char* mendFile = "Mend .ombrix/engine/aliases.json, or move it away.";

struct ListOptions {
    GlobalOptions global;
};

struct AddOptions {
    std::string alias, person;
    std::optional<std::string> display;
    bool dryRun = false;
    GlobalOptions global;
};

/// Neither a key nor an address.
bool isPlainName(std::string_view argument) {
    const std::string text = Text::lowercased(Text::flattened(argument));
    return !EntityKeys::isAddress(text) && !text.starts_with(EntityKeys::namePrefix) &&
           !text.starts_with(EntityKeys::emailPrefix);
}

/// The key that a name, an address or a key stands for. Throws `CLIError` for what names nobody.
std::string keyOf(std::string_view argument) {
    const std::string text = Text::lowercased(Text::flattened(argument));
    std::optional<std::string> key;
    if (text.starts_with(EntityKeys::namePrefix))
        key = EntityKeys::normalizeKey(text.substr(EntityKeys::namePrefix.size()));
    else if (text.starts_with(EntityKeys::emailPrefix))
        key = EntityKeys::normalizeKey({}, text.substr(EntityKeys::emailPrefix.size()));
    else if (EntityKeys::isAddress(text))
        key = EntityKeys::normalizeKey({}, text);
    else if (!text.starts_with(EntityKeys::threadPrefix))
        key = EntityKeys::normalizeKey(text);
    if (!key || EntityKeys::isGenericKey(*key))
        throw CLIError::invalidInput("'" + printable(argument) + "' names no person.",
                                     "Give a name, an address, or a key such as 'name:ana ruiz'.");
    return *key;
}

void requireNoRing(const std::vector<PersonIdentity>& identities, const std::string& problem,
                   const char* fix) {
    const auto ring = aliasRing(identities);
    if (ring.empty()) return;
    throw CLIError::invalidInput(problem + ": " +
                                     printable(Text::joined(ring, " is an alias of ")) +
                                     " is an alias of " + printable(ring.front()) + ".",
                                 fix);
}

const PersonAliases& checkedFile(EngineWorkspace& workspace) {
    const auto& aliases = workspace.aliasesFile();
    requireNoRing(aliases.identities(), "The aliases form a ring", mendFile);
    return aliases;
}

/// The file with these identities; members that this program does not know stay.
std::string fileText(const std::optional<std::string>& existing, const PersonAliases& aliases) {
    Json::Members members;
    if (existing) {
        const Json::Value value = Json::parse(*existing);
        if (value.members() != nullptr) members = *value.members();
    }
    members.insert_or_assign("identities", Json::toValue(aliases.identities()));
    return Json::write(members, Json::Style::file);
}

void listAliases(const CLIContext& context, const ListOptions&) {
    EngineWorkspace workspace(context);
    const auto& identities = checkedFile(workspace).identities();
    emitSuccess(context,
                Json::object({{"file", EnginePaths::aliasesFile}, {"identities", identities}}),
                workspace.warnings());
}

PlannedWork planAlias(EngineWorkspace& workspace, const AddOptions& options) {
    std::string alias = keyOf(options.alias), person = keyOf(options.person);
    // An address stands for the person before a name does: nobody else has it.
    if (alias.starts_with(EntityKeys::emailPrefix) && !person.starts_with(EntityKeys::emailPrefix))
        std::swap(alias, person);
    if (alias == person)
        throw CLIError::invalidInput(
            "This would form a ring: both are " + printable(person) + ".",
            "Give the other name first: ombrix-engine alias add ALIAS PERSON");
    PersonAliases aliases = checkedFile(workspace);
    PersonIdentity added{.canonical = person, .aliases = {alias}};
    if (options.display)
        added.display = *options.display;
    else if (aliases.display(person).value_or("").empty() && isPlainName(options.person))
        added.display = Text::flattened(options.person);
    auto all = aliases.identities();
    all.push_back(added);
    requireNoRing(all, "This would form a ring",
                  "Name the other one first: ombrix-engine alias add ALIAS PERSON");
    aliases.add(std::move(added));

    PlannedWork work{.changes = ChangeSet(workspace.folder())};
    work.data.emplace("identity", encode(*aliases.find(person)));
    const auto existing = workspace.folder().bytes(EnginePaths::aliasesFile);
    if (aliases != workspace.aliasesFile())
        work.changes.write(std::string(EnginePaths::aliasesFile), fileText(existing, aliases));
    workspace.setAliasesFile(std::move(aliases));
    planFollowUps(workspace, work.changes);
    return work;
}

void addAlias(const CLIContext& context, const AddOptions& options) {
    runPlanned(context, options.dryRun ? Writing::dryRun : Writing::forReal,
               [&](EngineWorkspace& workspace) { return planAlias(workspace, options); });
}
}  // namespace

void declareAlias(Command root) {
    const Command group = root.subcommand("alias", "Which names and addresses are one person's.");
    const Command list = group.subcommand("list", "The people in the aliases file.");
    const auto listOptions = list.options<ListOptions>();
    list.run(listOptions, listAliases);

    const Command add = group.subcommand("add", "Say that a name or an address is a person's.");
    const auto options = add.options<AddOptions>();
    add.positional("alias", options->alias, "Another name, address or key of the person.");
    add.positional("person", options->person, "The person's name, address or key.");
    add.option("--display NAME", options->display,
               "The name to show; else the person's, as given.");
    add.flag("--dry-run", options->dryRun,
             "Show what would change as unified diffs, and write nothing.");
    add.run(options, addAlias);
}
}  // namespace ombrix
