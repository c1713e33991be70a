// Mail addresses in free text. No model is told one, so they are found in every way in which people
// and programs write them; what only looks like one goes, too.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::Addresses {

/// The text with "(address)" for each address: a run without white space and without what stands
/// around an address ("<>", brackets, quotation marks, ",", ";", ":", "|"), in which an at sign is
/// neither the beginning nor the end. An at sign is "@", a wide or small one ("＠", "﹫"), or one
/// in the code of a page or a link ("&#64;", "&#x40;", "&commat;", "%40"). With blanks beside it,
/// it is one when a domain follows: "ana @ example.com". Words such as "(at)" are none. Linear.
std::string hidden(std::string_view text);
}  // namespace ombrix::Addresses
