// Which meetings a scope admits, decided from their records alone. `AnswerScope` itself decides
// from whole transcripts; what only turns can tell, its `speaker`, does not count here.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix::AskContext {

/// The folder name that stands for the meetings in no folder.
constexpr std::string_view unfiledFolderName = "Unfiled";

/// True when the meeting is in the folder, at any depth: one in "Acme/Weekly" is in "Acme" and in
/// "weekly". An empty folder holds every meeting, "Unfiled" those in no folder.
bool inFolder(const AskMeeting& meeting, std::string_view folder);

/// True when the meeting's id, participants, folder and day pass; `lastN` and `speaker` are not
/// looked at. An empty text admits everything.
bool admits(const AnswerScope& scope, const AskMeeting& meeting);

/// The meetings admitted, in their order; of them the first `lastN`, so give them newest first.
std::vector<AskMeeting> apply(const AnswerScope& scope, std::span<const AskMeeting> meetings);
}  // namespace ombrix::AskContext
