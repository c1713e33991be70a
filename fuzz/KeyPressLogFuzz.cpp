// The log of key presses: whatever its bytes, each line is a press or is skipped, and the counts
// add up.
#include <optional>
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixCore/KeyPressLog.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// What one line reads as by itself.
std::optional<KeyPressSummary> alone(std::string_view line) {
    try {
        return Json::decode<KeyPressSummary>(line);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TestFolder folder;
    const std::string_view text = Fuzz::text(data, size);
    const auto presses = KeyPressLog::read(folder.write("log", text));

    std::vector<KeyPressSummary> expected;
    for (const auto line : Text::splitDroppingEmpty(text, "\n"))
        if (auto press = alone(line)) expected.push_back(std::move(*press));
    law(presses == expected, "the log is its lines");

    std::int64_t counted = 0, pulls = 0;
    for (const auto& row : KeyPressLog::stats(presses)) {
        counted += row.presses;
        law(row.inserted <= row.presses && row.offered <= row.presses, "a part of the presses");
        law(row.inserted > 0 || (!row.medianToFirstDraft && !row.medianToMeetingNamed),
            "only what landed has a median");
        Json::write(encode(row), Json::Style::envelope);
    }
    for (const auto& press : presses) {
        if (press.kind == "pull") ++pulls;
        law(Json::decode<KeyPressSummary>(Json::write(encode(press), Json::Style::file)) == press,
            "a press reads back");
    }
    law(counted + pulls == static_cast<std::int64_t>(presses.size()), "each press counts once");
    return 0;
}
