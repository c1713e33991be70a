#include "OmbrixEngine/Steps/LandStep.h"

#include <algorithm>
#include <utility>

#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Steps/AnswerDoubts.h"
#include "OmbrixEngine/Steps/FollowUps.h"
#include "OmbrixEngine/Steps/Notes.h"
#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {

/// The record of a chunk, as the file has it.
struct LandStep::Chunk {
    std::string inputHash{}, route{}, model{};
    LandOutput output{};

    friend Json::Value encode(Chunk chunk) {
        return Json::object({{"inputHash", std::move(chunk.inputHash)},
                             {"route", std::move(chunk.route)},
                             {"model", std::move(chunk.model)},
                             {"output", std::move(chunk.output)}});
    }
    friend Chunk decode(Json::As<Chunk>, const Json::Object& in) {
        return {.inputHash = in.required<std::string>("inputHash"),
                .route = in.required<std::string>("route"),
                .model = in.required<std::string>("model"),
                .output = in.required<LandOutput>("output")};
    }
};

std::optional<std::string> whyNeverAsked(const TranscriptDocument& header, bool hasTurns) {
    if (header.isPrivate) return "the transcript is private";
    if (header.isRetryable()) return "the meeting is not transcribed yet";
    if (!hasTurns) return "the transcript has no turns";
    if (!ISODate::isValid(header.date)) return "the transcript has no date";
    return std::nullopt;
}

LandStep::LandStep(EngineWorkspace& workspace, const TranscriptEntry& entry)
    : workspace_(workspace), entry_(entry), document_(workspace.document(entry)) {
    if (const auto why = whyNeverAsked(document_, !document_.turns.empty())) {
        throw CLIError::invalidInput("No model is asked about this meeting: " + *why + ".",
                                     "ombrix-engine status lists the meetings to ask about.");
    }
    const auto facts = TranscriptFacts::of("", document_);
    fingerprint_ = facts.fingerprint;
    shown_ = workspace.privacy().cleaned(document_);
    LandHistory history(workspace);
    const auto context = history.context(entry, history.people(document_, facts.speakers));
    for (const auto& each : context.openFollowUps) followUpIDs_.push_back(each.id);

    auto chunks = LandInputBuilder::chunks(shown_.turns);
    chunkCount_ = chunks.size();
    if (chunkCount_ == 1) {
        questions_.push_back(
            {askInput(workspace, encode(input(context, std::nullopt, std::nullopt))), {}});
        return;
    }
    const auto stored = storedChunks();
    std::vector<LandOutput> records;
    for (std::size_t i = 0; i < chunkCount_; ++i) {
        const LandChunk chunk{static_cast<std::int64_t>(i + 1),
                              static_cast<std::int64_t>(chunkCount_)};
        questions_.push_back(
            {askInput(workspace, encode(input(context, std::move(chunks[i]), chunk))), chunk});
        const auto found =
            std::ranges::find(stored, questions_.back().input.hash, &Chunk::inputHash);
        if (found == stored.end()) continue;
        if (records.size() == i) next_ = i + 1;
        records.push_back(found->output);
    }
    if (records.size() < chunkCount_) return;
    auto last = input(context, LandInputBuilder::reduceTurns(records), std::nullopt);
    questions_.push_back({askInput(workspace, encode(std::move(last))), {}});
}

LandInput LandStep::input(LandHistory::Context context,
                          std::optional<std::vector<TranscriptDocument::Turn>> turns,
                          std::optional<LandChunk> chunk) const {
    return LandInputBuilder::build(shown_, workspace_.userName(), std::move(context.openFollowUps),
                                   std::move(context.stubs), std::move(context.corrections),
                                   std::move(turns), chunk);
}

std::vector<std::string> LandStep::doubts(const LandOutput& output) const {
    return doubtsAbout(output, shown_.turns);
}

void LandStep::check(const LandOutput& output) const {
    for (std::size_t i = 0; i < output.resolutions.size(); ++i) {
        const auto& id = output.resolutions[i].id;
        if (std::ranges::find(followUpIDs_, id) != followUpIDs_.end()) continue;
        throw RefusedAnswer({.rule = AnswerFault::Rule::citation,
                             .path = AnswerPath::item("resolutions", i) + ".id",
                             .problem = "no follow-up " + AnswerPath::inQuotes(id) +
                                        " in the input; copy an id, or leave the resolution out",
                             .text = id});
    }
}

const LandStep::Question& LandStep::next() const { return questions_[next_]; }

const LandStep::Question* LandStep::find(std::string_view inputHash) const {
    for (const auto& question : questions_)
        if (question.input.hash == inputHash) return &question;
    return nullptr;
}

std::string LandStep::chunksPath() const {
    return Paths::joined(chunksFolder, LandSidecar::fileName(entry_.key));
}

std::vector<LandStep::Chunk> LandStep::storedChunks() const {
    try {
        if (const auto bytes = workspace_.folder().bytes(chunksPath()))
            return Json::decode<std::vector<Chunk>>(*bytes);
    } catch (const Json::SyntaxError&) {  // then the chunks are asked again
    } catch (const Json::DecodingError&) {
    }
    return {};
}

void LandStep::planChunk(ChangeSet& changes, const Question& question, const GivenAnswer& answer,
                         const LandOutput& output) const {
    auto chunks = storedChunks();
    // Records of a transcript or a context that has changed since serve nothing.
    std::erase_if(chunks, [&](const Chunk& chunk) {
        return chunk.inputHash == question.input.hash || find(chunk.inputHash) == nullptr;
    });
    chunks.push_back({.inputHash = question.input.hash,
                      .route = std::string(rawValue(answer.route)),
                      .model = answer.model,
                      .output = output});
    const auto place = [this](const Chunk& chunk) { return find(chunk.inputHash); };
    std::ranges::sort(chunks, {}, place);
    changes.write(chunksPath(), Json::write(Json::toValue(std::move(chunks)), Json::Style::file));
}

std::string LandStep::plan(ChangeSet& changes, const GivenAnswer& answer, LandOutput output) {
    LandSidecar sidecar{.meetingKey = entry_.key,
                        .contentFingerprint = fingerprint_,
                        .relativePath = entry_.path,
                        .title = document_.title,
                        .date = document_.date,
                        .participants = document_.participants,
                        .landedAt = workspace_.now(),
                        .route = std::string(rawValue(answer.route)),
                        .model = answer.model,
                        .recipeVersion = std::string(EngineRecipes::landVersion),
                        .inputHash = answer.inputHash,
                        .output = std::move(output)};
    if (const auto* old = workspace_.landed(entry_.key)) {
        LandSidecar again = sidecar;
        again.landedAt = old->landedAt;
        if (again == *old) sidecar = std::move(again);
    }
    std::string path = Paths::joined(EnginePaths::landFolder, LandSidecar::fileName(entry_.key));
    changes.write(path, sidecar.encode());
    workspace_.land(std::move(sidecar));
    planFollowUps(workspace_, changes);
    planNotes(workspace_, changes, {entry_.key});
    return path;
}
}  // namespace ombrix
