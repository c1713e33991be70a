#include "OmbrixPlatform/Permissions.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrix::Permissions {

bool allowWriting(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return true;
    return (facts.st_mode & S_IWUSR) != 0 &&
           ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}
}  // namespace ombrix::Permissions
