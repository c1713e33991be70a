#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"

#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ContentFingerprint {

std::string make(std::string_view title, std::string_view date,
                 const std::vector<std::string>& participants,
                 const std::vector<TranscriptDocument::Turn>& turns) {
    std::string hashed;
    const auto append = [&](std::string_view text, char end) {
        hashed += text;
        hashed += end;
    };
    append(title, '\n');
    append(date, '\n');
    append(Text::joined(participants, ","), '\n');
    for (const auto& [speaker, text] : turns) {
        append(speaker, '\t');
        append(text, '\n');
    }
    return Digest::hex(Digest::sha256(hashed).data(), 8);
}
}  // namespace ombrix::ContentFingerprint
