#include "OmbrixEngine/Steps/TranscriptFacts.h"

#include <chrono>
#include <map>
#include <set>
#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixEngine/Workspace/EngineLock.h"
#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixPlatform/ForkJoin.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::string_view schema = "ombrix/engine-transcripts/v1";
/// A file may change twice within one tick of its clock, so what changed just now is read again.
constexpr std::chrono::nanoseconds tooFresh = std::chrono::seconds(2);

struct Stored {
    std::string schema{};
    std::map<std::string, TranscriptFactsCache::Row, std::less<>> transcripts{};
};

Stored decode(Json::As<Stored>, const Json::Object& in) {
    return {
        .schema = in.required<std::string>("schema"),
        .transcripts = in.required<std::map<std::string, TranscriptFactsCache::Row, std::less<>>>(
            "transcripts")};
}

std::map<std::string, TranscriptFactsCache::Row, std::less<>> stored(
    const TranscriptsFolder& folder) {
    try {
        if (const auto bytes = folder.bytes(TranscriptFactsCache::path)) {
            auto read = Json::decode<Stored>(*bytes);
            if (read.schema == schema) return std::move(read.transcripts);
        }
    } catch (const CLIError&) {
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
    return {};
}

std::optional<TranscriptFacts> factsAt(Files::Reader& files, const std::string& path) {
    const auto bytes = files.read(path, largestTranscript);
    if (!bytes || !Utf8::isValid(*bytes) || !OmbrixTranscriptMarker::declares(*bytes))
        return std::nullopt;
    const auto document = MarkdownTranscriptParser::parse(*bytes);
    if (!document) return std::nullopt;
    return TranscriptFacts::of(*bytes, *document);
}

/// False when the block that the engine wrote takes in anything else: it begins inside the talk, or
/// goes on after its machine line because its own closing marker is lost.
bool holdsOnlyGenerated(std::string_view text, std::string_view body, std::string_view block) {
    const auto talk =
        TranscriptSections::Sections(body).raw(TranscriptSections::Section::transcript);
    if (!talk.empty() && talk.data() + talk.size() > block.data()) return false;
    const auto machineLine = TranscriptEditor::machineProvenance(text);
    return machineLine && block.ends_with(Text::trimmed(*machineLine)) &&
           machineLine->data() + machineLine->size() >= block.data() + block.size() &&
           block.find("\n## Notes") == block.npos && block.find("\n## Transcript") == block.npos;
}

std::int64_t nowInNanoseconds() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}
}  // namespace

bool engineMayWriteNotes(std::string_view given) {
    const std::string text = Text::withLineFeeds(given);
    constexpr std::string_view heading = "\n## Transcript";
    const auto frame = TranscriptSections::frame(text);
    if (!frame || !NotesOwnership::classify(text).engineMayWrite()) return false;
    // An edit takes the first such line for the heading of the talk, also one in the header.
    const std::size_t transcript = text.find(heading);
    const std::size_t body = static_cast<std::size_t>(frame->body.data() - text.data());
    if (transcript == text.npos || transcript + 1 < body) return false;
    if (const auto block = TranscriptEditor::enhancedSections(text))
        return holdsOnlyGenerated(text, frame->body, *block);
    // The person's sections without a marker: a block made here would take them in.
    return !TranscriptEditor::hasUnmarkedSections(text);
}

TranscriptFacts TranscriptFacts::of(std::string_view text, const TranscriptDocument& document) {
    TranscriptFacts facts{.fingerprint = ContentFingerprint::make(
                              document.title, document.date, document.participants, document.turns),
                          .turns = static_cast<std::int64_t>(document.turns.size()),
                          .hasOwnNotes = !engineMayWriteNotes(text)};
    std::set<std::string_view> seen;
    for (const auto& turn : document.turns)
        if (seen.insert(turn.speaker).second) facts.speakers.push_back(turn.speaker);
    const auto notes = NotesOwnership::classify(text);
    if (notes.owner == NotesOwnership::Owner::engine) facts.notesAt = notes.provenance->at;
    return facts;
}

TranscriptFactsCache::TranscriptFactsCache(EngineWorkspace& workspace)
    : trustedBefore_(nowInNanoseconds() - tooFresh.count()) {
    constexpr std::size_t filesPerWorker = 8;
    auto old = stored(workspace.folder());
    const auto& entries = workspace.transcripts();
    std::vector<const TranscriptEntry*> unread;
    for (const auto& entry : entries) {
        const auto known = old.find(entry.path);
        const bool isKnown = known != old.end() && !entry.facts.isLink &&
                             known->second.size == static_cast<std::int64_t>(entry.facts.size) &&
                             known->second.modified == entry.facts.modified;
        if (isKnown)
            rows_.emplace(entry.path, std::move(known->second));
        else
            unread.push_back(&entry);
    }
    isChanged_ = old.size() != rows_.size() || !unread.empty();
    readCount_ = unread.size();
    std::vector<std::optional<TranscriptFacts>> found(unread.size());
    ForkJoin::run(unread.size(), ForkJoin::workersFor(unread.size(), filesPerWorker),
                  [&](ForkJoin::Places& places) {
                      Files::Reader files;
                      places.take([&](std::size_t i) {
                          found[i] = factsAt(files, workspace.folder().absolute(unread[i]->path));
                      });
                  });
    for (std::size_t i = 0; i < unread.size(); ++i) {
        if (!found[i]) continue;
        rows_.insert_or_assign(unread[i]->path,
                               Row{.size = static_cast<std::int64_t>(unread[i]->facts.size),
                                   .modified = unread[i]->facts.modified,
                                   .facts = std::move(*found[i])});
    }
}

const TranscriptFacts* TranscriptFactsCache::of(const TranscriptEntry& entry) const {
    const auto found = rows_.find(entry.path);
    return found == rows_.end() ? nullptr : &found->second.facts;
}

void TranscriptFactsCache::save(const TranscriptsFolder& folder) const {
    if (!isChanged_) return;
    Json::Members transcripts;
    for (const auto& [file, row] : rows_)
        if (row.modified < trustedBefore_) transcripts.emplace(file, encode(row));
    const std::string text =
        Json::write(Json::object({{"schema", schema}, {"transcripts", std::move(transcripts)}}),
                    Json::Style::canonical);
    const auto lock = EngineLock::tryNow(folder);
    if (!lock) return;
    try {
        const std::string target = folder.inside(path);
        if (folder.bytes(path) != text) Files::writeAtomically(target, text);
    } catch (const Files::Error&) {
    } catch (const CLIError&) {
    }
}

Json::Value encode(TranscriptFactsCache::Row row) {
    return Json::object({{"size", row.size},
                         {"modified", row.modified},
                         {"fingerprint", std::move(row.facts.fingerprint)},
                         {"speakers", std::move(row.facts.speakers)},
                         {"turns", row.facts.turns},
                         {"ownNotes", row.facts.hasOwnNotes},
                         {"notesAt", row.facts.notesAt}});
}

TranscriptFactsCache::Row decode(Json::As<TranscriptFactsCache::Row>, const Json::Object& in) {
    return {.size = in.required<std::int64_t>("size"),
            .modified = in.required<std::int64_t>("modified"),
            .facts = {.fingerprint = in.required<std::string>("fingerprint"),
                      .speakers = in.required<std::vector<std::string>>("speakers"),
                      .turns = in.required<std::int64_t>("turns"),
                      .hasOwnNotes = in.required<bool>("ownNotes"),
                      .notesAt = in.optional<Instant>("notesAt")}};
}
}  // namespace ombrix
