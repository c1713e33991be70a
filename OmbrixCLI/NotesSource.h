// Reads a new body of notes. Valid UTF-8 stays as it is, with line ends, U+0000 and a leading
// U+FEFF.
#pragma once

#include <cstddef>
#include <string>

namespace ombrix::NotesSource {

/// Standard input to its end; each ill-formed sequence becomes U+FFFD. Throws `std::system_error`
/// when it cannot be read.
std::string fromStandardInput();

/// The first `most` bytes of standard input as they are, all when there are fewer. Throws the same.
std::string bytesOfStandardInput(std::size_t most);

/// The text of a regular file. Throws `Files::Error` when it cannot be read and
/// `std::runtime_error` when it is another kind of file (a pipe would block) or not valid
/// UTF-8.
std::string fromFile(const std::string& path);
}  // namespace ombrix::NotesSource
