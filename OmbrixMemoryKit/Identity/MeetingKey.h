// The name of a meeting. It depends on nothing that an edit of the transcript changes, so a meeting
// that is landed again, on any machine, has the same name. Files on disk are named after it.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::MeetingKey {

/// With a spend id (the recording's) that is not blank: the id, trimmed, with every character that
/// is no letter, no number and none of "-_." replaced by "_". Otherwise "m-" and 16 hexadecimal
/// digits of a hash of when it started, or of its day when that is empty, and of its title.
std::string make(std::string_view spendID, std::string_view startedAt, std::string_view date,
                 std::string_view title);
}  // namespace ombrix::MeetingKey
