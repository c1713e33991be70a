#include "OmbrixAnswerKit/Answer/AnswerModels.h"

#include <algorithm>
#include <iterator>

namespace ombrix {

namespace AnswerModels {
namespace {

constexpr auto rowOf(std::string_view id) {
    return std::ranges::find(all, id, &AnswerModelSpec::id);
}

constexpr bool isSelectable(std::string_view id) {
    const auto row = rowOf(id);
    return row != all.end() && row->selectable;
}

static_assert(std::ranges::all_of(all,
                                  [](const AnswerModelSpec& row) {
                                      return std::ranges::count(all, row.id,
                                                                &AnswerModelSpec::id) == 1;
                                  }),
              "an id twice");
static_assert(isSelectable(automatic) && isSelectable(autoDefault) &&
              isSelectable(autoEngineDefault));
}  // namespace

std::optional<AnswerModelSpec> spec(std::string_view id) {
    const auto row = rowOf(id);
    if (row == all.end()) return std::nullopt;
    return *row;
}

std::vector<AnswerModelSpec> offlineSelectable() {
    std::vector<AnswerModelSpec> rows;
    std::ranges::copy_if(all, std::back_inserter(rows), &AnswerModelSpec::selectable);
    return rows;
}

std::vector<AnswerModelSpec> listed() {
    std::vector<AnswerModelSpec> rows = offlineSelectable();
    std::erase_if(rows, [](const AnswerModelSpec& row) { return !row.listed; });
    return rows;
}
}  // namespace AnswerModels
}  // namespace ombrix
