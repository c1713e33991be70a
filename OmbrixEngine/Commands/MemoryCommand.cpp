#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Steps/Entities.h"
#include "OmbrixMemoryKit/Memory/MemoryNotes.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"

namespace ombrix {
namespace {

struct MemoryOptions {
    std::string entity;
    GlobalOptions global;
};

Json::Value shown(const MemoryRegionParser::Line& line) {
    Json::Array sources;
    for (const auto& source : line.sources)
        sources.push_back(Json::object({{"title", source.title}, {"date", source.date}}));
    return Json::object({{"text", line.text},
                         {"sources", std::move(sources)},
                         {"readsAs", line.readsAs},
                         {"followUpID", line.followUpID}});
}

Json::Array sectionsOf(std::string_view region) {
    Json::Array sections;
    for (const auto& section : MemoryRegionParser::sections(region)) {
        Json::Array lines;
        for (const auto& line : section.lines) lines.push_back(shown(line));
        sections.push_back(Json::object(
            {{"title", section.title}, {"lines", std::move(lines)}, {"prose", section.prose}}));
    }
    return sections;
}

void memory(const CLIContext& context, const MemoryOptions& options) {
    EngineWorkspace workspace(context);
    workspace.tolerateDamagedAliases();
    const auto entity = Entities::named(workspace, options.entity);
    const auto* file = Entities::file(workspace, entity);
    if (file == nullptr)
        throw CLIError::notFound(
            "'" + printable(Entities::title(entity)) + "' has no memory file.",
            "Ask for one: " + engineCommand(context, {"ask", "consolidate", options.entity}));
    if (!file->parsed)
        throw CLIError::invalidInput(printable(file->path) +
                                         " is damaged: its frontmatter or its engine region "
                                         "cannot be read.",
                                     "Restore its marker lines, or move the file away.");
    const auto& [meta, region, corrections] = *file->parsed;
    const auto parsed = EngineRegion::parse(file->text);
    const auto open = EngineRegion::parseOpenLine(parsed->openLine);
    const bool isThread = meta.kind == LandMemoryFact::Kind::thread;
    const auto ofThread = [&](auto value) {
        return isThread ? std::optional(std::move(value)) : std::nullopt;
    };
    emitSuccess(context,
                Json::object({{"file", file->path},
                              {"title", meta.title},
                              {"kind", meta.kind},
                              {"key", meta.key},
                              {"aliases", meta.aliases},
                              {"firstSeen", meta.firstSeen},
                              {"lastSeen", meta.lastSeen},
                              {"meetings", meta.meetings},
                              {"series", meta.series},
                              {"members", ofThread(meta.members)},
                              {"standfirst", MemoryNotes::standfirst(meta.meetings, meta.firstSeen,
                                                                     meta.lastSeen, meta.kind)},
                              {"writtenBy", open ? std::optional(open->by) : std::nullopt},
                              {"writtenAt", open ? open->at : std::nullopt},
                              {"sections", sectionsOf(region)},
                              {"notes", MemoryNotes::body(file->text)},
                              {"corrections", Corrections::lines(corrections)}}),
                workspace.warnings());
}
}  // namespace

void declareMemory(Command root) {
    const Command command =
        root.subcommand("memory", "What the memory file of a person or thread says.");
    const auto options = command.options<MemoryOptions>();
    command.positional("entity", options->entity,
                       "Its key, its name, a part of the name, or its memory file.");
    command.run(options, memory);
}
}  // namespace ombrix
