#include "OmbrixCore/StoreQueries.h"

#include <stdexcept>
#include <utility>

#include "OmbrixPlatform/Text.h"

namespace ombrix::StoreQueries {

std::string newestFirst(std::string_view columns, std::string_view table,
                        const std::vector<std::string_view>& conditions, std::string_view tail) {
    const std::string where = Text::joined(conditions, " AND ");
    return Text::joined(std::vector<std::string_view>{"SELECT ", columns, "\nFROM ", table, "\n",
                                                      where.empty() ? "" : "WHERE ", where,
                                                      "\nORDER BY id DESC\n", tail},
                        "");
}

std::string byId(std::string_view columns, std::string_view table) {
    return Text::joined(
        std::vector<std::string_view>{"SELECT ", columns, " FROM ", table, " WHERE id = ? LIMIT 1"},
        "");
}

std::string likePattern(std::string_view text) {
    std::string pattern = "%";
    for (const char c : text) {
        if (c == '\\' || c == '%' || c == '_') pattern += '\\';
        pattern += c;
    }
    return pattern + "%";
}

std::int64_t require32Bits(std::int64_t number, std::string_view name) {
    if (!std::in_range<std::int32_t>(number)) {
        throw std::out_of_range("The " + std::string(name) + " " + std::to_string(number) +
                                " does not fit 32 bits.");
    }
    return number;
}
}  // namespace ombrix::StoreQueries
