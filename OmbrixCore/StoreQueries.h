// The SQL that lists and lookups of the store share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::StoreQueries {

/// SELECT `columns` FROM `table` WHERE all `conditions` ORDER BY id DESC `tail`, a line each. There
/// is no WHERE without conditions.
std::string newestFirst(std::string_view columns, std::string_view table,
                        const std::vector<std::string_view>& conditions, std::string_view tail);
/// SELECT `columns` of the row whose id is bound.
std::string byId(std::string_view columns, std::string_view table);

/// The operand of LIKE with the escape character "\" that means "contains exactly this text".
std::string likePattern(std::string_view text);

/// `number` itself; throws `std::out_of_range`, with `name` in its text, when it does not fit 32
/// signed bits. SQLite would take the lower ones and give another list than was asked for.
std::int64_t require32Bits(std::int64_t number, std::string_view name);
}  // namespace ombrix::StoreQueries
