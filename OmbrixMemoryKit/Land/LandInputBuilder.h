// Assembles what the land recipe is given. A long transcript is landed in chunks, and then once
// more over the turns that `reduceTurns` makes of their records; that last record is kept.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Land/LandInput.h"
#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixMemoryKit/Region/Corrections.h"

namespace ombrix::LandInputBuilder {

using Turn = TranscriptDocument::Turn;

constexpr std::size_t maxChunkBytes = 160'000;
/// Lower-case labels of the person the tool works for.
constexpr std::array<std::string_view, 2> selfLabels = {"me", "you"};

/// The input for `document`, or for a chunk of it when `turns` are given. The labels are counted in
/// the whole document all the same. Of the stubs the first three count, of the corrections those a
/// model is told of. The hash is left empty.
LandInput build(const TranscriptDocument& document, std::string userName,
                std::vector<LandOpenFollowUp> openFollowUps,
                std::vector<LandAttendeeStub> attendeeStubs, std::vector<Correction> corrections,
                std::optional<std::vector<Turn>> turns = std::nullopt,
                std::optional<LandChunk> chunk = std::nullopt);

/// The turns in order, cut into as few chunks as the order allows. A turn costs the bytes of its
/// speaker and its text and 32 more; a chunk costs at most `maxBytes`, save that a turn that costs
/// more stands in one by itself. No turns give no chunks.
std::vector<std::vector<Turn>> chunks(std::vector<Turn> turns,
                                      std::size_t maxBytes = maxChunkBytes);

/// One turn a record, in order: "Part 2 of 3" says, in one line for each, what the record claims.
std::vector<Turn> reduceTurns(std::span<const LandOutput> outputs);

/// How many distinct labels speak, blanks around them and case aside, without the user's: their
/// name and `selfLabels`. An empty label counts unless `userName` is blank.
std::int64_t remoteLabelCount(const std::vector<Turn>& turns, std::string_view userName);

/// The participants other than the user, in order, without blank and generic ones. The user is who
/// has the same name, and, when `userName` is one word, the only one whose first word it is.
std::vector<std::string> remoteParticipants(const std::vector<std::string>& participants,
                                            std::string_view userName);
}  // namespace ombrix::LandInputBuilder
