// A card in any bytes.
#include <string>

#include "Law.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    const auto slug = BeforeFile::slug(text);
    law(!Text::contains(slug, "--") && slug.find_first_of("/.\n") == slug.npos,
        "a slug is safe in a file name");

    const auto calendar = Calendar::gregorianUtc();
    const auto card = BeforeFile::parse(text, calendar);
    if (!card) return 0;
    for (const auto& line : card->lines) {
        law(!line.text.empty(), "a line has a text");
        law(line.id().starts_with(rawValue(line.kind)), "and an id");
    }
    const Instant at = card->writtenAt.value_or(Instant());
    const std::string writer = card->writer.value_or("");
    const std::string file = BeforeFile::render(*card, writer, at, 1, calendar);
    if (Text::contains(file, "\r")) return 0;  // a bare CR becomes part of a CR LF, or a blank
    const auto again = BeforeFile::parse(file, calendar);
    law(again.has_value(), "a card that was read can be written");
    law(again->forDate == card->forDate && again->lines.size() <= card->lines.size(),
        "without lines that were not there");
    return 0;
}
