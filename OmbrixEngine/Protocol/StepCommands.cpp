#include "OmbrixEngine/Protocol/StepCommands.h"

namespace ombrix::StepCommands {

void declareAsk(const Command& ask, const char* name, const char* abstract, Subject subject,
                void (*work)(const CLIContext&, const AskOptions&)) {
    const Command command = ask.subcommand(name, abstract);
    const auto options = command.options<AskOptions>();
    command.positional(subject.name, options->subject, subject.help);
    command.run(options, work);
}

void declareGive(const Command& give, const char* name, const char* abstract, Subject subject,
                 void (*work)(const CLIContext&, const SubjectGiveOptions&)) {
    const Command command = give.subcommand(name, abstract);
    const auto options = command.options<SubjectGiveOptions>();
    command.positional(subject.name, options->subject, subject.help);
    declareGiveOptions(command, *options);
    command.run(options, work);
}
}  // namespace ombrix::StepCommands
