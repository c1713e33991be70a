#include "OmbrixCLI/MovesReader.h"

#include <set>
#include <utility>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/NextMoveFile.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

/// A sparse file can claim more bytes than any memory holds.
constexpr std::size_t largestFile = std::size_t{1} << 30;
/// How many transcripts are kept for moves that cite other meetings than their own.
constexpr std::size_t mostSourcesKept = 8;

/// The paths of the files in `folder` whose names end in `extension`.
std::vector<std::string> filesIn(const std::string& folder, std::string_view extension) {
    std::vector<std::string> paths;
    for (const auto& name : Files::names(folder))
        if (name.ends_with(extension)) paths.push_back(Paths::joined(folder, name));
    return paths;
}

/// The records of the `.json` files in a folder that can be read.
template <typename Record, typename Take>
void readRecordsIn(const std::string& folder, Files::Reader& files, Take take) {
    Json::Parser parser;
    for (const auto& path : filesIn(folder, ".json")) {
        const auto bytes = files.read(path, largestFile);
        if (!bytes) continue;
        try {
            take(Json::decode<Record>(parser.parse(*bytes)));
        } catch (const Json::SyntaxError&) {
        } catch (const Json::DecodingError&) {
        } catch (const UnsupportedSchema&) {
        }
    }
}

/// The keys of the meetings that these moves may cite, their own among them.
std::set<std::string> meetingsOf(const std::vector<MoveLibrary::MoveInState>& moves) {
    std::set<std::string> keys;
    const auto add = [&keys](const std::vector<Claim>& claims) {
        for (const auto& claim : claims)
            for (const auto& ref : claim.refs) keys.insert(ref.sourceId);
    };
    for (const auto& [move, state] : moves) {
        keys.insert(move.sourceId);
        add(move.claims);
        for (const auto& revision : state.revisions) add(revision.claims);
    }
    return keys;
}
}  // namespace

MovesReader::MovesReader(std::string folder, std::string_view memoryFolder)
    : folder_(std::move(folder)), realFolder_(Files::realPath(folder_).value_or("")) {
    readSidecars();
    readRecords();
    readCorrections(memoryFolder);
}

void MovesReader::readSidecars() {
    readRecordsIn<PrepareSidecar>(Paths::joined(folder_, EnginePaths::prepareFolder), files_,
                                  [this](PrepareSidecar sidecar) {
                                      places_[sidecar.meetingKey].push_back(
                                          {sidecar.relativePath, sidecar.title, sidecar.date});
                                      sidecars_.push_back(std::move(sidecar));
                                  });
    MoveLibrary::sortNewestFirst(sidecars_);
}

void MovesReader::readRecords() {
    readRecordsIn<MoveStateRecord>(
        Paths::joined(folder_, EnginePaths::movesFolder), files_, [this](MoveStateRecord record) {
            std::string id = record.moveId();
            known_.records.insert_or_assign(std::move(id), std::move(record));
        });
}

void MovesReader::readCorrections(std::string_view memoryFolder) {
    const std::string memory = Paths::joined(folder_, memoryFolder);
    std::vector<std::string> texts;
    for (const auto& path : filesIn(Paths::joined(memory, NextMoveFile::subfolder), ".md"))
        if (auto text = Files::text(path, largestFile)) texts.push_back(std::move(*text));
    known_.corrections = MoveLibrary::corrections(texts);
}

void MovesReader::eachMove(
    MoveLibrary::Detail detail,
    const std::function<bool(MoveLibrary::MoveInState move, const MoveSources&)>& visit) {
    for (auto& sidecar : std::exchange(sidecars_, {})) {
        if (sources_.size() > mostSourcesKept) sources_.clear();
        auto moves = MoveLibrary::movesOf(std::move(sidecar), known_, detail);
        for (const auto& key : meetingsOf(moves)) load(key);
        for (auto& each : moves)
            if (!visit(std::move(each), sources_)) return;
    }
}

void MovesReader::load(const std::string& meetingKey) {
    if (sources_.contains(meetingKey)) return;
    const auto places = places_.find(meetingKey);
    if (places == places_.end()) return;
    // Of several sidecars of one meeting the last one counts whose transcript can be read.
    for (auto place = places->second.rbegin(); place != places->second.rend(); ++place) {
        if (auto found = source(meetingKey, *place)) {
            sources_.emplace(meetingKey, std::move(found));
            return;
        }
    }
    places_.erase(places);  // do not try them again for the next sidecar of that meeting
}

std::shared_ptr<const MoveSource> MovesReader::source(const std::string& meetingKey,
                                                      const Place& place) {
    const auto path = Files::realPath(folder_ + "/" + place.relativePath);
    if (!path || realFolder_.empty() || !path->starts_with(Paths::joined(realFolder_, "")))
        return nullptr;
    const auto bytes = files_.read(*path, largestFile);
    if (!bytes || !Utf8::isValid(*bytes)) return nullptr;
    auto document = MarkdownTranscriptParser::parse(*bytes);
    if (!document) return nullptr;
    auto people = std::move(document->participants);
    return std::make_shared<const MoveSource>(meetingKey, std::move(*document), place.title,
                                              place.date, std::move(people));
}

std::vector<ResolvedMove> MovesReader::resolved(std::string folder, std::string_view memoryFolder) {
    std::vector<ResolvedMove> moves;
    MovesReader reader(std::move(folder), memoryFolder);
    const auto resolve = [&moves](MoveLibrary::MoveInState each, const MoveSources& sources) {
        moves.push_back(
            MoveEvidence::resolve(std::move(each.move), std::move(each.state), sources));
        return true;
    };
    reader.eachMove(MoveLibrary::Detail::whole, resolve);
    return moves;
}
}  // namespace ombrix
