// The files of prepared moves: a sidecar, a state record and a next-move file, each read from the
// same bytes. Records read back; a file that is taken keeps what is below its markers when it is
// written again.
//
// libFuzzer: -dict=fuzz/json.dict
#include <optional>
#include <string>

#include "Law.h"
#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/MoveLibrary.h"
#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"
#include "OmbrixMemoryKit/Moves/NextMoveFile.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"

using namespace ombrix;
using Fuzz::law;

namespace {

template <typename Record>
std::optional<Record> read(std::string_view text) {
    try {
        return Record::decode(text);
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    } catch (const UnsupportedSchema&) {
    }
    return std::nullopt;
}

void checkState(MoveState state) {
    const bool wasValid = state.revision(state.current) != nullptr;
    const MoveSources none;
    PreparedMove move{.id = state.moveId, .sourceId = "m"};
    const auto resolved = MoveEvidence::resolve(move, state, none);
    law(resolved.evidence == MoveEvidence::outline(move, state, none).evidence,
        "the outline says what resolving says");
    const auto adopted = MoveLifecycle::reduce(std::move(state), MoveActions::Adopt{"t"});
    law(!wasValid || adopted.revision(adopted.current) != nullptr, "a valid index stays valid");
}

void checkFile(std::string_view text) {
    const auto parsed = NextMoveFile::parse(text);
    if (!parsed) return;
    const auto rewritten =
        NextMoveFile::render({}, parsed->meta, {}, parsed->writer.value_or(""), Instant(), text);
    law(rewritten.has_value(), "a file that is read is written again");
    const auto again = NextMoveFile::parse(*rewritten);
    law(again.has_value(), "and is read again");
    law(again->corrections == parsed->corrections, "with the same corrections");
    // Writing makes CR LF a LF, of several CRs the last one, and ends the file in a line feed.
    const auto tail = [](std::string_view file) {
        std::string after = EngineRegion::parse(file)->after;
        std::erase(after, '\r');
        after.resize(after.find_last_not_of('\n') + 1);
        return after;
    };
    law(tail(*rewritten) == tail(text), "and the same text below its markers");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = Fuzz::text(data, size);
    if (const auto sidecar = read<PrepareSidecar>(text)) {
        law(read<PrepareSidecar>(sidecar->encode()) == sidecar, "a sidecar reads back");
        MoveLibrary::resolve({*sidecar}, {}, {});
    }
    if (const auto record = read<MoveStateRecord>(text)) {
        law(read<MoveStateRecord>(record->encode()) == record, "a record reads back");
        checkState(record->state(Preparation::ready));
    }
    checkFile(text);
    return 0;
}
