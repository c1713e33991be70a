// The two streams the tool writes to. Programs read standard output, so only a payload or a help
// text goes there; people read standard error.
#pragma once

#include <stdexcept>
#include <string_view>

namespace ombrix {

namespace StandardOutput {

/// Standard output is closed, full or gone.
class Error : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Writes all of `text`, unbuffered, so that order holds with what is written later. Ends the
/// process by SIGPIPE when the reader of a pipe is gone; throws `Error` otherwise.
void write(std::string_view text);
}  // namespace StandardOutput

/// `text` to standard error, its control characters made visible: a message may quote foreign
/// bytes, and a terminal obeys them. What cannot be written there is dropped.
void writeStandardError(std::string_view text);

/// `text`, of this program alone, to the terminal that standard error is; it may steer it.
void writeTerminal(std::string_view text);
}  // namespace ombrix
