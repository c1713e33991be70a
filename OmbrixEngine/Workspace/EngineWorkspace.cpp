#include "OmbrixEngine/Workspace/EngineWorkspace.h"

#include <algorithm>
#include <concepts>
#include <iterator>
#include <utility>

#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/EvaluatedMoment.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixPlatform/ForkJoin.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::size_t largestSidecar = std::size_t{64} << 20U;

std::string configuredFolder(const AnswerFolderResolver::Config& config) {
    return AnswerFolderResolver::existing(config);
}
}  // namespace

EngineWorkspace::EngineWorkspace(const CLIContext& context)
    : folder_(configuredFolder(AnswerFolderResolver::Config(context.supportDirectory))),
      calendar_(Calendar::current()),
      now_(evaluatedMoment(context.options.now, calendar_,
                           "ombrix-engine status --now 2026-08-21")) {
    const AnswerFolderResolver::Config config(context.supportDirectory);
    memoryName_ = AnswerFolderResolver::memoryFolderName(config);
    userName_ = AnswerFolderResolver::userName(config).value_or("");
    today_ = calendar_.dayString(now_);
}

std::string EngineWorkspace::memoryPath(std::string_view name) const {
    const std::string place = folder_.inside(memoryName_);
    if (Files::exists(place) && !Files::isDirectory(place)) {
        throw CLIError::invalidInput(
            "The Memory folder '" + printable(memoryName_) + "' is no folder but a file.",
            "Move that file away, or set engine_folder_name in "
            "config.json.");
    }
    return Paths::joined(memoryName_, name);
}

// ---- transcripts -------------------------------------------------------------------------------

void EngineWorkspace::readTranscripts() {
    transcripts_ = TranscriptEntries::read(folder_, memoryName_);
    for (std::size_t i = 0; i < transcripts_->size(); ++i) {
        const auto& entry = (*transcripts_)[i];
        if (entry.header.isPrivate) privateKeys_.insert(entry.key);
        const auto [first, isNew] = byKey_.emplace(entry.key, i);
        if (isNew) continue;
        warnings_.push_back("Two transcripts are one meeting: " + TranscriptEntries::line(entry) +
                            " and " + printable((*transcripts_)[first->second].path) + ".");
    }
}

const std::vector<TranscriptEntry>& EngineWorkspace::transcripts() {
    if (!transcripts_) readTranscripts();
    return *transcripts_;
}

const TranscriptEntry& EngineWorkspace::meeting(std::string_view argument) {
    return TranscriptEntries::named(transcripts(), folder_, argument);
}

std::string EngineWorkspace::text(const TranscriptEntry& entry) const {
    auto bytes = folder_.bytes(entry.path, largestTranscript);
    if (!bytes || !Utf8::isValid(*bytes) || !OmbrixTranscriptMarker::declares(*bytes))
        throw CLIError::notFound("'" + printable(entry.path) + "' is no transcript any more.");
    return *std::move(bytes);
}

TranscriptDocument EngineWorkspace::document(const TranscriptEntry& entry) const {
    auto document = MarkdownTranscriptParser::parse(text(entry));
    if (!document)
        throw CLIError::notFound("'" + printable(entry.path) + "' is no transcript any more.");
    return *std::move(document);
}

// ---- sidecars ----------------------------------------------------------------------------------

template <typename Sidecar>
std::vector<Sidecar> EngineWorkspace::sidecarsIn(std::string_view relativeFolder) {
    const auto paths = folder_.files(relativeFolder, ".json");
    std::vector<std::optional<Sidecar>> found(paths.size());
    ForkJoin::run(paths.size(),
                  ForkJoin::workersFor(paths.size(), TranscriptsFolder::filesPerWorker),
                  [&](ForkJoin::Places& places) {
                      Files::Reader files;
                      Json::Parser parser;
                      places.take([&](std::size_t i) {
                          const auto bytes = files.read(folder_.absolute(paths[i]), largestSidecar);
                          if (!bytes) return;
                          try {
                              found[i] = Json::decode<Sidecar>(parser.parse(*bytes));
                              if constexpr (std::same_as<Sidecar, LandSidecar>)
                                  if (trim_) trim_(*found[i]);
                          } catch (const Json::SyntaxError&) {
                          } catch (const Json::DecodingError&) {
                          } catch (const UnsupportedSchema&) {
                          }
                      });
                  });
    // Of two records of one meeting the one in the file of its name counts, else the later.
    ByKey places;
    const auto hasItsName = [&](std::size_t i) {
        return Paths::lastComponent(paths[i]) == LandSidecar::fileName(found[i]->meetingKey);
    };
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!found[i]) {
            warnings_.push_back("Passed over, as it cannot be read: " + printable(paths[i]) + ".");
            continue;
        }
        const auto [place, isNew] = places.emplace(found[i]->meetingKey, i);
        if (!isNew && !hasItsName(place->second)) place->second = i;
    }
    std::vector<bool> counts(found.size());
    for (const auto& [key, i] : places) counts[i] = true;
    std::vector<Sidecar> sidecars;
    sidecars.reserve(places.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        if (counts[i]) sidecars.push_back(std::move(*found[i]));
    return sidecars;
}

EngineWorkspace::Chronology EngineWorkspace::chronology(const LandSidecar& sidecar) const {
    const auto found = byKey_.find(sidecar.meetingKey);
    std::string_view start;
    if (found != byKey_.end()) start = (*transcripts_)[found->second].header.startedAt;
    return {sidecar.date, start, sidecar.meetingKey};
}

const std::vector<LandSidecar>& EngineWorkspace::landed() {
    if (!landed_) {
        transcripts();
        landed_ = sidecarsIn<LandSidecar>(EnginePaths::landFolder);
        sortLanded();
    }
    return *landed_;
}

void EngineWorkspace::sortLanded() {
    std::vector<std::pair<Chronology, std::size_t>> order;
    for (std::size_t i = 0; i < landed_->size(); ++i)
        order.emplace_back(chronology((*landed_)[i]), i);
    std::ranges::sort(order);
    std::vector<LandSidecar> sorted;
    sorted.reserve(order.size());
    for (const auto& [when, i] : order) sorted.push_back(std::move((*landed_)[i]));
    landed_ = std::move(sorted);
    chronology_.clear();
    landedByKey_.clear();
    for (const auto& sidecar : *landed_) {
        landedByKey_.emplace(sidecar.meetingKey, chronology_.size());
        chronology_.push_back(chronology(sidecar));
    }
}

void EngineWorkspace::land(LandSidecar sidecar) {
    landed();
    const auto old = landedByKey_.find(sidecar.meetingKey);
    if (old == landedByKey_.end())
        landed_->push_back(std::move(sidecar));
    else
        (*landed_)[old->second] = std::move(sidecar);
    sortLanded();
}

const LandSidecar* EngineWorkspace::landed(std::string_view key) {
    landed();
    const auto found = landedByKey_.find(key);
    return found == landedByKey_.end() ? nullptr : &(*landed_)[found->second];
}

std::optional<LandSidecar> EngineWorkspace::wholeRecord(std::string_view key) {
    const auto* known = landed(key);
    if (known == nullptr) return std::nullopt;
    if (!trim_) return *known;
    const std::string path = Paths::joined(EnginePaths::landFolder, LandSidecar::fileName(key));
    try {
        if (const auto bytes = folder_.bytes(path)) return LandSidecar::decode(*bytes);
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
    return std::nullopt;
}

const TranscriptEntry* EngineWorkspace::transcript(std::string_view key) {
    transcripts();
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : &(*transcripts_)[found->second];
}

bool EngineWorkspace::isPrivate(std::string_view meetingKey) {
    return transcript(meetingKey) == nullptr || privateKeys_.contains(meetingKey);
}

std::span<const LandSidecar> EngineWorkspace::landedBefore(const TranscriptEntry& entry) {
    const Chronology place{entry.header.date, entry.header.startedAt, entry.key};
    landed();
    const auto end = std::ranges::lower_bound(chronology_, place);
    return std::span(*landed_).first(static_cast<std::size_t>(end - chronology_.begin()));
}

const std::vector<PrepareSidecar>& EngineWorkspace::prepared() {
    if (!prepared_) prepared_ = sidecarsIn<PrepareSidecar>(EnginePaths::prepareFolder);
    return *prepared_;
}

// ---- what the user wrote -----------------------------------------------------------------------

const PersonAliases& EngineWorkspace::aliasesFile() {
    if (aliasesFile_) return *aliasesFile_;
    try {
        const auto bytes = folder_.bytes(EnginePaths::aliasesFile);
        aliasesFile_ = bytes ? Json::decode<PersonAliases>(*bytes) : PersonAliases();
    } catch (const std::exception& error) {
        const std::string why = std::string("cannot be read: ") + error.what();
        const std::string message =
            std::string(EnginePaths::aliasesFile) + " " + why + (why.ends_with('.') ? "" : ".");
        if (!toleratesDamagedAliases_)
            throw CLIError::invalidInput(
                message,
                "Ask the person to mend it: who is one and who is private is known by it.");
        warnings_.push_back(message +
                            " Each name counts as a person of its own here, and nothing "
                            "is asked or written before the file is mended.");
        whyAliasesAreLost_ = why;
        aliasesFile_ = PersonAliases();
    }
    return *aliasesFile_;
}

const std::string& EngineWorkspace::whyAliasesAreLost() {
    aliasesFile();
    return whyAliasesAreLost_;
}

void EngineWorkspace::setAliasesFile(PersonAliases aliases) {
    aliasesFile_ = std::move(aliases);
    aliases_.reset();
    privacy_.reset();
}

const PersonAliases& EngineWorkspace::aliases() {
    if (aliases_) return *aliases_;
    PersonAliases all = aliasesFile();
    for (const auto& file : memoryFiles()) {
        if (!file.parsed || file.parsed->meta.kind != LandMemoryFact::Kind::person) continue;
        PersonIdentity identity{.canonical = all.canonical(file.key)};
        for (const auto& correction : file.corrections) {
            if (correction.kind != Correction::Kind::alias) continue;
            if (auto key = EntityKeys::normalizeKey(correction.text); key && *key != file.key)
                identity.aliases.push_back(*std::move(key));
        }
        if (!identity.aliases.empty()) all.add(std::move(identity));
    }
    aliases_ = std::move(all);
    return *aliases_;
}

const std::vector<MemoryFileEntry>& EngineWorkspace::memoryFiles() {
    if (!memoryFiles_) {
        memoryFiles_.emplace();
        const std::string followUps = memoryPath(EnginePaths::followUpsFileName);
        for (const auto& path : folder_.files(memoryPath(""), ".md")) {
            if (path == followUps) continue;
            if (auto bytes = folder_.bytes(path))
                memoryFiles_->push_back(MemoryFileEntry::of(path, *std::move(bytes)));
        }
    }
    return *memoryFiles_;
}

const std::vector<Correction>& EngineWorkspace::corrections() {
    if (!corrections_) {
        const auto text = folder_.bytes(memoryPath(EnginePaths::followUpsFileName));
        corrections_ = Corrections::parse(Corrections::section(text.value_or("")).value_or(""));
    }
    return *corrections_;
}

const Privacy& EngineWorkspace::privacy() {
    if (privacy_) return *privacy_;
    std::vector<Privacy::Hidden> hidden;
    for (const auto& file : memoryFiles()) {
        const auto isPrivate = [](const Correction& each) {
            return each.kind == Correction::Kind::isPrivate;
        };
        if (std::ranges::none_of(file.corrections, isPrivate)) continue;
        Privacy::Hidden each{.keys = {file.key}};
        if (file.parsed)
            each.keys.insert(each.keys.end(), file.parsed->meta.aliases.begin(),
                             file.parsed->meta.aliases.end());
        // A thread is called by ordinary words, which stay.
        if (!file.key.starts_with("thread:")) {
            each.names.push_back(file.title);
            for (const auto& correction : file.corrections)
                if (correction.kind == Correction::Kind::alias)
                    each.names.push_back(correction.text);
        }
        hidden.push_back(std::move(each));
    }
    privacy_.emplace(hidden, aliases());
    return *privacy_;
}

FollowUpsLedger EngineWorkspace::ledger() {
    return FollowUpsMerger::merge(landed(), corrections(), today_, aliases());
}

FollowUpsLedger EngineWorkspace::publicLedger(std::span<const LandSidecar> records,
                                              std::string_view day) {
    const auto isShown = [this](const LandSidecar& record) {
        return !isPrivate(record.meetingKey);
    };
    std::vector<LandSidecar> shown;
    if (!std::ranges::all_of(records, isShown)) {
        std::ranges::copy_if(records, std::back_inserter(shown), isShown);
        records = shown;
    }
    return FollowUpsMerger::merge(records, corrections(), day, aliases());
}
}  // namespace ombrix
