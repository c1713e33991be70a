// A press from a command line: the first line is a selection, the second an address, the rest the
// field. What lands keeps what it does not replace.
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixAnswerKit/Key/KeyExclusions.h"
#include "OmbrixAnswerKit/Key/KeyPress.h"
#include "OmbrixCLI/SelectionOption.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;
using Fuzz::law;

namespace {

void checkHost(std::string_view url) {
    const auto host = KeyExclusions::host(url);
    if (!host) return;
    law(!host->empty() && *host == Text::lowercased(*host), "a host is in lower case");
    const bool isAddress = Text::contains(*host, ":");  // IPv6 loses its brackets
    law(isAddress || host->starts_with("www.") ||
            KeyExclusions::host("https://" + *host + "/") == *host,
        "a host is the host of its address");
}

void checkLanding(const KeyPress::Plan& plan, const KeyPress::FieldSnapshot& field) {
    const auto drafts = KeyPress::Drafts::single("d\U0001F44B");
    const auto landing = KeyPress::landing(plan, field, drafts);
    const auto range = KeyPress::replacedRange(plan, field);
    law(landing.has_value() == range.has_value(), "what lands replaces a range");
    if (!landing) return;
    const auto end = static_cast<std::int64_t>(Utf8::utf16Length(field.text));
    law(0 <= range->start && range->start <= range->end && range->end <= end,
        "the range lies in the field");
    law(landing->text == KeyPress::slice(field.text, 0, range->start) + drafts.draft +
                             KeyPress::slice(field.text, range->end, end),
        "the rest stays");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [selection, rest] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    const auto [url, bytes] = Fuzz::firstLineAndRest(rest);
    checkHost(url);
    KeyExclusions::reason({.bundleID = std::string(url), .url = std::string(url)},
                          std::vector{std::string(selection)}, std::string(selection));

    KeyPress::FieldSnapshot field{.text = Utf8::repaired(bytes)};
    const auto length = static_cast<std::int64_t>(Utf8::utf16Length(field.text));
    const auto range = parseSelection(selection, length);
    law(!range || (0 <= range->start && range->start <= range->end && range->end <= length),
        "a selection lies in the field");
    if (range) {
        field.selStart = range->start;
        field.selEnd = range->end;
    }
    const KeyPress::MeetingCandidate one{"1", "Audit", "2026-07-31", {"audit", "ann"}};
    const KeyPress::MeetingCandidate two{"2", "Pilot", "2026-07-30", {"pilot", "ann"}};
    for (const auto& candidates : {std::vector<KeyPress::MeetingCandidate>{}, {one}, {one, two}}) {
        const auto plan = KeyPress::plan({candidates}, field);
        law((plan.kind == KeyPress::Kind::ambiguous) == plan.choices.has_value(),
            "only an ambiguous press has choices");
        law(!plan.choices || (plan.choices->size() > 1 && !plan.matched), "a choice is one of two");
        law((plan.kind == KeyPress::Kind::guess) == plan.lookedAt.has_value(),
            "only a guess says what it looked at");
        checkLanding(plan, field);
        const auto chosen = KeyPress::resolveAsked(plan, two);
        law(chosen.kind != KeyPress::Kind::ambiguous, "a choice settles the press");
        checkLanding(chosen, field);
        checkLanding(KeyPress::pulled(two, field), field);
        KeyPress::source(plan, std::string(selection));
    }
    KeyPress::formatDate(selection);
    return 0;
}
