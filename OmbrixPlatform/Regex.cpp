#include "OmbrixPlatform/Regex.h"

#include <unicode/regex.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace ombrix {
namespace {

/// A matcher over one text. ICU keeps a pointer to the pattern and to the text.
class Search {
  public:
    Search(const icu::RegexPattern& pattern, std::string_view text) {
        const char* bytes = text.empty() ? "" : text.data();
        utext_openUTF8(&text_, bytes, static_cast<std::int64_t>(text.size()), &status_);
        matcher_.reset(pattern.matcher(status_));
        if (U_SUCCESS(status_)) matcher_->reset(&text_);
    }
    ~Search() { utext_close(&text_); }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    bool next() { return U_SUCCESS(status_) && matcher_->find(status_) && U_SUCCESS(status_); }
    bool from(std::size_t place) {
        return U_SUCCESS(status_) && matcher_->find(static_cast<std::int64_t>(place), status_) &&
               U_SUCCESS(status_);
    }
    Regex::Match match() {
        Regex::Match result;
        const std::int32_t count = matcher_->groupCount();
        result.groups.reserve(static_cast<std::size_t>(count) + 1);
        for (std::int32_t group = 0; group <= count; ++group) {
            const std::int64_t start = matcher_->start64(group, status_);
            if (start < 0) {
                result.groups.emplace_back();
            } else {
                result.groups.emplace_back(
                    ByteRange{static_cast<std::size_t>(start),
                              static_cast<std::size_t>(matcher_->end64(group, status_))});
            }
        }
        return result;
    }

  private:
    UErrorCode status_ = U_ZERO_ERROR;
    UText text_ = UTEXT_INITIALIZER;
    std::unique_ptr<icu::RegexMatcher> matcher_;
};

/// The pattern with each `\s+` and `\s*` outside a set as a set of its own.
std::string withSetsForWhiteSpace(std::string_view pattern) {
    std::string result;
    std::size_t openSets = 0;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const std::string_view rest = pattern.substr(at);
        if (openSets == 0 && (rest.starts_with("\\s+") || rest.starts_with("\\s*"))) {
            result += "[\\s]";
            ++at;
            continue;
        }
        if (rest.starts_with("\\Q")) {  // a literal text up to \E
            const std::size_t length = std::min(rest.find("\\E"), rest.size());
            result += rest.substr(0, length);
            at += length - 1;
            continue;
        }
        result += rest.front();
        if (rest.front() == '[') ++openSets;
        if (rest.front() == ']' && openSets > 0) --openSets;
        if (rest.front() == '\\' && rest.size() > 1) result += pattern[++at];
    }
    return result;
}

std::unique_ptr<icu::RegexPattern> compile(std::string_view pattern, std::uint32_t flags) {
    const std::string safe = withSetsForWhiteSpace(pattern);
    UErrorCode status = U_ZERO_ERROR;
    UParseError error{};
    std::unique_ptr<icu::RegexPattern> compiled(
        icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(safe), flags, error, status));
    if (U_FAILURE(status)) {
        std::fprintf(stderr, "A regular expression does not compile (%s at %d): %s\n",
                     u_errorName(status), error.offset, safe.c_str());
        std::abort();
    }
    return compiled;
}
}  // namespace

struct Regex::Expression {
    std::string pattern;
    std::uint32_t flags = 0;
    std::once_flag once{};
    std::unique_ptr<icu::RegexPattern> compiled{};

    const icu::RegexPattern& get() {
        std::call_once(once, [this] { compiled = compile(pattern, flags); });
        return *compiled;
    }
};

Regex::Regex(std::string_view pattern, Case letterCase, bool multiline)
    : expression_(new Expression{.pattern = std::string(pattern)}) {
    if (letterCase == Case::ignored) expression_->flags |= UREGEX_CASE_INSENSITIVE;
    if (multiline) expression_->flags |= UREGEX_MULTILINE;
}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;

bool Regex::found(std::string_view text) const { return Search(expression_->get(), text).next(); }

std::optional<Regex::Match> Regex::firstMatch(std::string_view text, std::size_t from) const {
    Search search(expression_->get(), text);
    if (!search.from(from)) return std::nullopt;
    return search.match();
}

std::vector<Regex::Match> Regex::matches(std::string_view text) const {
    std::vector<Match> found;
    Search search(expression_->get(), text);
    while (search.next()) found.push_back(search.match());
    return found;
}

std::string Regex::replacingAll(std::string_view text,
                                const std::function<std::string(const Match&)>& replacement) const {
    std::string result;
    std::size_t place = 0;
    for (const auto& match : matches(text)) {
        result += text.substr(place, match.range().begin - place);
        result += replacement(match);
        place = match.range().end;
    }
    result += text.substr(place);
    return result;
}

std::string Regex::escaped(std::string_view literal) {
    constexpr std::string_view special = "\\^$.|?*+()[]{}-&#/~\"' \t\n";
    std::string result;
    for (const char c : literal) {
        if (special.find(c) != std::string_view::npos) result.push_back('\\');
        result.push_back(c);
    }
    return result;
}
}  // namespace ombrix
