// Temporary files (TemporaryName.h) whose process was killed before it could name or remove them.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace ombrix::AbandonedFiles {

/// Removes those in `folder`, not below it, that were not written for `age` by the machine's clock,
/// whatever day a command works at; returns how many. Everything else stays: other names, links,
/// files with a second name or of another user, and the file of a process that lives, which holds
/// its lock. What cannot be removed stays, too. Costs one reading of the folder. Throws
/// `Files::Error` only for a shortage of the machine.
std::size_t remove(const std::string& folder, std::chrono::seconds age);
}  // namespace ombrix::AbandonedFiles
