// What to say about a word of the command line that does not fit: the problem in one sentence and,
// where one can be guessed, what was probably meant.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace ombrix::LineAdvice {

/// No subcommand of `group` has the name `word`.
std::string unknownCommand(const CLI::App& group, std::string_view word);

/// `command` has no option of the name in `word`. `rest` is what follows on the line: it may name
/// the command that the option belongs to.
std::string unknownOption(const CLI::App& command, std::string_view word,
                          std::span<const std::string> rest);

/// One positional too many: `word`, after `positionals`. `rest` follows.
std::string unexpectedArgument(const CLI::App& command, std::span<const std::string> positionals,
                               std::string_view word, std::span<const std::string> rest);

/// The candidate that `word` is most likely a misspelling of; empty when none is near: more than
/// one edit in three letters, or more than three. An edit inserts, removes, replaces or swaps.
/// Takes the product of the lengths, and words of more than 64 bytes are near nothing.
std::string nearest(std::string_view word, std::span<const std::string> candidates);
}  // namespace ombrix::LineAdvice
