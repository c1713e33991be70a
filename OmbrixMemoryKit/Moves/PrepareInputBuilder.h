// Assembles what the prepare recipe is given: the record of a landed meeting and the transcript as
// it is now. Of a long transcript the model gets the turns around what the record found.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Moves/PrepareInput.h"
#include "OmbrixMemoryKit/Region/Corrections.h"

namespace ombrix::PrepareInputBuilder {

/// The most bytes of turns that are sent, as `LandInputBuilder::chunks` counts them.
constexpr std::size_t maxTurnBytes = LandInputBuilder::maxChunkBytes;

/// The input for the meeting. A commitment has the id that the ledger knows it by, under the
/// person's canonical key; its key and name are without addresses. Of the corrections those of this
/// meeting's commitments count, and name these ids. The hash is left empty.
PrepareInput build(const LandSidecar& landed, const TranscriptDocument& document,
                   const PersonAliases& aliases, std::span<const Correction> corrections,
                   std::string userName, std::string today, std::size_t maxBytes = maxTurnBytes);

/// The indices, ascending, of the turns to send when all cost more than `maxBytes`: those that hold
/// a quote, which count first in the order of the quotes, and as many turns on both sides of each
/// as fit. The first turns when no quote is found. All turns when they fit. Quotes are looked for
/// word by word.
std::vector<std::size_t> window(std::span<const TranscriptDocument::Turn> turns,
                                std::span<const std::string> quotes, std::size_t maxBytes);
}  // namespace ombrix::PrepareInputBuilder
