// Reads an export by the readers of `readExport` and, only where they find no export or nobody who
// speaks, by those of shapes that could also be something else. Those look for signs that prose,
// code, logs and other documents do not have, first in the beginning of the text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ExportReader.h"

namespace ombrix::TranscriptImport {

/// What `readExport` gives when somebody speaks in it; else the meetings of the first further
/// reader that finds some; else what `readExport` gives. `reference` is a day not before the
/// meetings, for exports that tell a day without its year. `text` has plain line ends.
std::optional<Export> readAnyExport(std::string_view text,
                                    const std::optional<std::string>& reference);
}  // namespace ombrix::TranscriptImport
