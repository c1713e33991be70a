// An earlier way of saving left a plain text twin, "weekly.txt", beside each transcript
// "weekly.md". These functions find the twins and move them to the Trash. A text file is a twin
// only when its content says that this system wrote it; no other file is touched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::TxtTwinTidy {

constexpr std::string_view ombrixMarker = "source: Ombrix";

/// Called after each file with the number of files done and of all.
using Progress = std::function<void(std::size_t done, std::size_t all)>;

/// The paths, ascending, of the twins below `folder`. Hidden folders are skipped, extensions count
/// in lower case only, and a file that is no UTF-8 text is no twin. Changes nothing.
std::vector<std::string> plan(const std::string& folder, const Progress& progress = {});

/// The text contains `ombrixMarker`.
bool isOmbrixTwin(std::string_view content);

/// How many of the files were moved to the Trash. One that cannot be moved stays where it is.
std::int64_t trash(const std::vector<std::string>& paths, const Progress& progress = {});
}  // namespace ombrix::TxtTwinTidy
