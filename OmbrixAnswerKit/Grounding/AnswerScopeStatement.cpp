#include "OmbrixAnswerKit/Grounding/AnswerScopeStatement.h"

#include <string_view>

#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::AnswerScopeStatement {
namespace {

constexpr std::string_view separator = " · ";

bool isTold(const std::optional<std::string>& text) { return text && !text->empty(); }

std::string counted(std::int64_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + std::string(count == 1 ? one : several);
}

std::string countClause(const Input& input) {
    if (input.scanned == 0) return "0 meetings in scope";
    if (input.browsing)
        return counted(input.totalMatched, " meeting in scope", " meetings in scope");
    if (input.totalMatched == 0)
        return "0 of " + std::to_string(input.scanned) + " meetings in scope matched";
    if (input.packed < input.totalMatched)
        return std::to_string(input.packed) + " of " + std::to_string(input.totalMatched) +
               " matching meetings";
    return counted(input.totalMatched, " matching meeting", " matching meetings");
}

/// Empty when no time narrowed the search.
std::string timeClause(const Input& input) {
    const auto& scope = input.scope;
    if (!input.timePhrases.empty()) return Text::joined(input.timePhrases, ", ");
    if (input.policyWindowDays.value_or(0) >= 1)
        return "the past " + std::to_string(*input.policyWindowDays) + " days";
    if (scope.lastN) return "the last " + std::to_string(*scope.lastN);
    if (!isTold(scope.dateFrom)) return {};
    if (isTold(scope.dateTo)) return *scope.dateFrom + " to " + *scope.dateTo;
    return "since " + *scope.dateFrom;
}

std::string_view lastFolder(std::string_view folder) {
    const auto components = Paths::components(folder);
    return components.empty() ? folder : components.back();
}
}  // namespace

std::string line(const Input& input) {
    const auto& scope = input.scope;
    std::vector<std::string> clauses = {countClause(input)};
    // Phrases narrow even when they are empty texts, so the clause is there whenever they are.
    if (auto time = timeClause(input); !time.empty() || !input.timePhrases.empty())
        clauses.push_back(std::move(time));
    if (isTold(scope.participant)) clauses.push_back("with " + *scope.participant);
    if (isTold(scope.folder)) clauses.push_back("in " + std::string(lastFolder(*scope.folder)));
    if (scope.meetingIDs && scope.meetingIDs->size() == 1) clauses.emplace_back("this meeting");

    const bool isWholeLibrary = clauses.size() == 1 && input.scanned >= 1 && scope.isAll();
    std::string result = Text::joined(clauses, separator);
    if (isWholeLibrary) result += " across your library, newest first";
    if (isTold(input.policyNote)) result.append(separator).append(*input.policyNote);
    return result;
}
}  // namespace ombrix::AnswerScopeStatement
