// What the permissions of a file say. A file is replaced by renaming another one to its name, which
// asks for permission to the folder alone; so whoever replaces one looks at the file's own first.
#pragma once

#include <string>

namespace ombrix::Permissions {

/// False when this process may not write what is at `path`, a file or a folder, and when its owner
/// took the permission from themselves: then it is meant to stay as it is, though root may write
/// it. A link counts as what it leads to. True when there is nothing.
bool allowWriting(const std::string& path);
}  // namespace ombrix::Permissions
