// The line ends of an export. All readers take texts with plain ones.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::TranscriptImport {

/// The text without a byte order mark, and with LF for CR LF and for CR. Shows `text`, or `storage`
/// when something had to be changed.
std::string_view withPlainLineEnds(std::string_view text, std::string& storage);
}  // namespace ombrix::TranscriptImport
