#include "OmbrixEngine/Steps/PrepareStep.h"

#include <set>
#include <utility>

#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Steps/LandStep.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixMemoryKit/Moves/PrepareInputBuilder.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

using IDs = std::set<std::string, std::less<>>;

/// The sidecar of the meeting and its path; readers let the last one count.
struct Stored {
    std::string path;
    PrepareSidecar sidecar;
};

std::optional<Stored> stored(const TranscriptsFolder& folder, std::string_view meetingKey) {
    std::optional<Stored> last;
    for (const auto& path : folder.files(EnginePaths::prepareFolder, ".json")) {
        try {
            if (const auto bytes = folder.bytes(path))
                if (auto sidecar = PrepareSidecar::decode(*bytes); sidecar.meetingKey == meetingKey)
                    last = {path, std::move(sidecar)};
        } catch (const Json::SyntaxError&) {  // readers pass over it, too
        } catch (const Json::DecodingError&) {
        } catch (const PrepareSidecar::DecodeError&) {
        }
    }
    return last;
}
}  // namespace

PrepareStep::PrepareStep(EngineWorkspace& workspace, const TranscriptEntry& entry,
                         const std::string& landCommand)
    : workspace_(workspace), entry_(entry) {
    auto document = workspace.document(entry);
    if (const auto why = whyNeverAsked(document, !document.turns.empty()))
        throw CLIError::invalidInput("No model is asked about this meeting: " + *why + ".",
                                     "ombrix-engine status lists the meetings to ask about.");
    const auto* sidecar = workspace.landed(entry.key);
    if (sidecar == nullptr)
        throw CLIError::notFound("'" + printable(document.title) + "' is not landed yet.",
                                 "Land it first: " + landCommand);
    fingerprint_ = ContentFingerprint::make(document.title, document.date, document.participants,
                                            document.turns);
    if (fingerprint_ != sidecar->contentFingerprint)
        throw CLIError::invalidInput(
            "'" + printable(document.title) + "' was edited after it was landed.",
            "Land it again first: " + landCommand);
    title_ = document.title;
    date_ = document.date;
    const auto& privacy = workspace.privacy();
    LandSidecar shown = *sidecar;
    std::erase_if(shown.output.commitments, [&](const LandCommitment& each) {
        return privacy.hides(each.whoKey) || privacy.hidesName(each.who);
    });
    std::erase_if(document.participants, [&](const std::string& name) {
        return privacy.hidesName(name) || privacy.cleanedText(name) != name;
    });
    // Ids are those of the turns as they stand in the file; what is private goes out of the texts
    // afterwards.
    input_ =
        PrepareInputBuilder::build(shown, document, workspace.aliases(), workspace.corrections(),
                                   workspace.userName(), workspace.today());
    question_ = askInput(workspace, encode(input_));
}

void PrepareStep::check(const PrepareOutput& output) const {
    IDs turns, commitments;
    for (const auto& turn : input_.meeting.turns) turns.insert(turn.id);
    for (const auto& each : input_.commitments)
        if (each.direction != CommitmentDirection::owedToUser) commitments.insert(each.id);
    output.validate(turns);
    output.validateCommitments(commitments);
}

std::string PrepareStep::plan(ChangeSet& changes, const GivenAnswer& answer,
                              PrepareOutput output) const {
    const auto old = stored(workspace_.folder(), entry_.key);
    std::string path =
        old ? old->path
            : Paths::joined(EnginePaths::prepareFolder, LandSidecar::fileName(entry_.key));
    PrepareSidecar sidecar{.meetingKey = entry_.key,
                           .contentFingerprint = fingerprint_,
                           .relativePath = entry_.path,
                           .title = title_,
                           .date = date_,
                           .preparedAt = workspace_.now(),
                           .route = std::string(rawValue(answer.route)),
                           .model = answer.model,
                           .recipeVersion = std::string(EngineRecipes::prepareVersion),
                           .inputHash = answer.inputHash,
                           .output = std::move(output)};
    if (old) {
        PrepareSidecar again = sidecar;
        again.preparedAt = old->sidecar.preparedAt;
        if (again == old->sidecar) sidecar = std::move(again);
    }
    changes.write(path, sidecar.encode());
    return path;
}
}  // namespace ombrix
