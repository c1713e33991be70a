// Manual pages in the form that man(1) reads.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixCLI/CommandDescription.h"

namespace ombrix::ManualPage {

/// "ombrix-cli-meetings-list": the page of a command, without the section.
std::string name(const CommandDescription& command);

/// The page of one command of `tool`. `version` stands in its footer; `common`, in roff, is what
/// all pages of the tool end with: statuses, environment, files.
std::string text(const CommandDescription& tool, const CommandDescription& command,
                 std::string_view version, std::string_view common);
}  // namespace ombrix::ManualPage
