// A follow-ups file that a person edited, in any bytes, on its way through a rendering.
#include <string>

#include "Law.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [quote, existing] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    FollowUpsLedger ledger{.meetingsRead = 3, .today = "2026-09-01"};
    ledger.youOweLive = {{.what = std::string(quote), .who = "Ana", .quote = std::string(quote)}};
    const Instant updated = *parseIsoInstant("2026-09-01T14:03:22Z");

    if (Text::contains(existing, "\r\r\n")) return 0;  // becomes CR LF, which becomes LF next time
    const auto read = FollowUpsFile::parseFrontmatter(existing);
    law(!read || FollowUpsFile::declares(existing), "only its own frontmatter is read");
    const auto parsed = EngineRegion::parse(existing);
    const auto rendered = FollowUpsFile::render(ledger, quote, updated, existing);
    const bool isBlank = Text::trimmed(existing).empty();
    law(rendered.has_value() == (isBlank || parsed.has_value()), "a damaged file is left alone");
    if (!rendered) return 0;
    const auto now = EngineRegion::parse(*rendered);
    law(now.has_value(), "what is rendered has one region");
    law(isBlank || now->after == parsed->after, "what stands below the region is kept");
    law(isBlank || parsed->before.starts_with("---\n") || now->before.ends_with(parsed->before),
        "what stands above it is kept");
    law(FollowUpsFile::parseFrontmatter(*rendered) ==
            FollowUpsFile::Frontmatter{.updated = updated, .meetingsRead = 3},
        "the frontmatter reads back");
    law(FollowUpsFile::render(ledger, quote, updated, rendered) == rendered,
        "rendering again changes nothing");
    return 0;
}
