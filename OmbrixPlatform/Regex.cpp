#include "OmbrixPlatform/Regex.h"

#include <unicode/regex.h>
#include <unicode/utext.h>

#include <cstdio>
#include <cstdlib>

namespace ombrix {

struct Regex::Compiled {
    std::unique_ptr<icu::RegexPattern> pattern;
};

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
}  // namespace

Regex::Regex(std::string_view pattern, Case letterCase, bool multiline)
    : compiled_(std::make_unique<Compiled>()) {
    std::uint32_t flags = 0;
    if (letterCase == Case::ignored) flags |= UREGEX_CASE_INSENSITIVE;
    if (multiline) flags |= UREGEX_MULTILINE;
    UErrorCode status = U_ZERO_ERROR;
    UParseError error{};
    compiled_->pattern.reset(
        icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(icu::StringPiece(
                                       pattern.data(), static_cast<std::int32_t>(pattern.size()))),
                                   flags, error, status));
    if (U_FAILURE(status)) {
        std::fprintf(stderr, "A regular expression does not compile (%s at %d): %.*s\n",
                     u_errorName(status), error.offset, static_cast<int>(pattern.size()),
                     pattern.data());
        std::abort();
    }
}

Regex::~Regex() = default;

bool Regex::found(std::string_view text) const { return Search(*compiled_->pattern, text).next(); }

std::optional<Regex::Match> Regex::firstMatch(std::string_view text, std::size_t from) const {
    Search search(*compiled_->pattern, text);
    if (!search.from(from)) return std::nullopt;
    return search.match();
}

std::vector<Regex::Match> Regex::matches(std::string_view text) const {
    std::vector<Match> found;
    Search search(*compiled_->pattern, text);
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
