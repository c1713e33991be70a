#include "OmbrixPlatform/JsonFault.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Json {
namespace {

/// Goes through a text until it finds a fault; every function returns false at one.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : text_(text) {}

    std::optional<Fault> run() {
        while (step()) {
        }
        return std::move(fault_);
    }

  private:
    enum class Next { value, valueOrEnd, key, keyOrEnd, colon, commaOrEnd, nothing };

    bool fail(const char* problem, std::size_t at) {
        fault_ = {.at = at, .problem = problem, .isCut = at >= text_.size()};
        return false;
    }
    bool fail(const char* problem) { return fail(problem, at_); }

    bool step() {
        while (at_ < text_.size() && Text::contains(" \n\r\t", text_.substr(at_, 1))) ++at_;
        if (at_ == text_.size()) return next_ != Next::nothing && fail("the text ends too early");
        const char c = text_[at_];
        switch (next_) {
            case Next::value:
                return value(c);
            case Next::valueOrEnd:
                return c == ']' ? close() : value(c);
            case Next::keyOrEnd:
                if (c == '}') return close();
                [[fallthrough]];
            case Next::key:
                next_ = Next::colon;
                return c == '"' ? string() : fail("a key in double quotes was expected");
            case Next::colon:
                next_ = Next::value;
                return c == ':' ? skip() : fail("a colon was expected after the key");
            case Next::commaOrEnd:
                return commaOrEnd(c);
            case Next::nothing:
                return fail("something follows the JSON");
        }
        return false;
    }

    bool skip() {
        ++at_;
        return true;
    }

    bool open(char closing, Next next) {
        if (closings_.size() == maximalDepth) return fail("nested too deep");
        closings_.push_back(closing);
        next_ = next;
        return skip();
    }

    bool close() {
        closings_.pop_back();
        afterValue();
        return skip();
    }

    void afterValue() { next_ = closings_.empty() ? Next::nothing : Next::commaOrEnd; }

    bool commaOrEnd(char c) {
        if (c == closings_.back()) return close();
        if (c != ',')
            return fail(closings_.back() == '}' ? "a comma or } was expected"
                                                : "a comma or ] was expected");
        next_ = closings_.back() == '}' ? Next::key : Next::value;
        return skip();
    }

    bool value(char c) {
        if (c == '{') return open('}', Next::keyOrEnd);
        if (c == '[') return open(']', Next::valueOrEnd);
        afterValue();
        if (c == '"') return string();
        if (c == '-' || Text::isAsciiDigit(c)) return number();
        const auto rest = text_.substr(at_);
        for (const std::string_view word : {"true", "false", "null"}) {
            if (rest.starts_with(word)) return ended(at_ + word.size());
            if (word.starts_with(rest)) return fail("the text ends too early", text_.size());
        }
        return fail("a value was expected");
    }

    /// Goes to the end of a number or a word, which nothing may be stuck to.
    bool ended(std::size_t end) {
        at_ = end;
        if (at_ < text_.size() && !Text::contains(" \n\r\t,]}", text_.substr(at_, 1)))
            return fail("a value ends here, and something is stuck to it");
        return true;
    }

    bool digits(std::size_t& at) {
        const auto start = at;
        while (at < text_.size() && Text::isAsciiDigit(text_[at])) ++at;
        return at > start || fail("a digit was expected", at);
    }

    bool number() {
        std::size_t at = at_ + (text_[at_] == '-' ? 1 : 0);
        const auto is = [&](std::string_view any) {
            return at < text_.size() && Text::contains(any, text_.substr(at, 1));
        };
        if (is("0"))
            ++at;
        else if (!digits(at))
            return false;
        if (is(".") && !digits(++at)) return false;
        if (is("eE")) {
            ++at;
            if (is("+-")) ++at;
            if (!digits(at)) return false;
        }
        return ended(at);
    }

    bool string() {
        const auto isPlain = [](char c) {
            return c != '"' && c != '\\' && static_cast<unsigned char>(c) >= 0x20;
        };
        for (++at_;;) {
            const auto* from = text_.data() + at_;
            at_ += static_cast<std::size_t>(
                std::find_if_not(from, text_.data() + text_.size(), isPlain) - from);
            if (at_ == text_.size()) return fail("the text ends inside a string");
            if (text_[at_] == '"') return skip();
            if (text_[at_] == '\n' || text_[at_] == '\r')
                return fail("a line end inside a string; write \\n");
            if (text_[at_] != '\\') return fail("a control character inside a string");
            if (!escape()) return false;
        }
    }

    bool escape() {
        if (at_ + 1 == text_.size()) return fail("the text ends inside a string", text_.size());
        if (text_[at_ + 1] == 'u') return unicodeEscape();
        if (!Text::contains("\"\\/bfnrt", text_.substr(at_ + 1, 1)))
            return fail("a backslash that JSON does not know; write \\\\");
        at_ += 2;
        return true;
    }

    /// The UTF-16 unit of an escape at `at_`, behind which it goes.
    std::optional<std::uint32_t> unit() {
        const auto digits = text_.substr(at_ + 2, 4);
        std::uint32_t unit = 0;
        for (const char c : digits) {
            if (!Text::isAsciiHexDigit(c)) {
                fail("an escape \\u without four hexadecimal digits");
                return std::nullopt;
            }
            const char lower = Text::asciiLowercased(c);
            unit = unit * 16 + static_cast<std::uint32_t>(
                                   Text::isAsciiDigit(lower) ? lower - '0' : lower - 'a' + 10);
        }
        if (digits.size() < 4) {
            fail("the text ends inside a string", text_.size());
            return std::nullopt;
        }
        at_ += 6;
        return unit;
    }

    bool unicodeEscape() {
        const auto start = at_;
        const auto first = unit();
        if (!first) return false;
        if (*first < 0xD800 || *first > 0xDFFF) return true;
        constexpr auto half = "an escape \\u that is half a surrogate pair";
        if (*first > 0xDBFF) return fail(half, start);
        const auto rest = text_.substr(at_, 2);
        if (rest != "\\u")
            return std::string_view("\\u").starts_with(rest)
                       ? fail("the text ends inside a string", text_.size())
                       : fail(half, start);
        const auto second = unit();
        if (!second) return false;
        return (*second >= 0xDC00 && *second <= 0xDFFF) || fail(half, start);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    Next next_ = Next::value;
    std::vector<char> closings_;
    std::optional<Fault> fault_;
};
}  // namespace

std::optional<Fault> firstFault(std::string_view text) {
    if (!Utf8::isValid(text)) {
        const std::string repaired = Utf8::repaired(text);
        const auto at = std::ranges::mismatch(text, repaired).in1 - text.begin();
        return Fault{.at = static_cast<std::size_t>(at), .problem = "not UTF-8"};
    }
    return Scanner(text).run();
}
}  // namespace ombrix::Json
