// The two commands of a step that is about one thing, which one word names: a meeting, a person, a
// thread.
#pragma once

#include <string>

#include "OmbrixCLI/CommandLine.h"
#include "OmbrixEngine/Protocol/Give.h"

namespace ombrix::StepCommands {

struct AskOptions {
    std::string subject;
    GlobalOptions global;
};

struct SubjectGiveOptions : GiveOptions {
    std::string subject;
};

/// The positional argument: what the help calls it, and what it says.
struct Subject {
    const char *name, *help;
};

/// Declares `ask NAME SUBJECT`.
void declareAsk(const Command& ask, const char* name, const char* abstract, Subject subject,
                void (*work)(const CLIContext&, const AskOptions&));
/// Declares `give NAME SUBJECT` with the options of every `give`.
void declareGive(const Command& give, const char* name, const char* abstract, Subject subject,
                 void (*work)(const CLIContext&, const SubjectGiveOptions&));
}  // namespace ombrix::StepCommands
