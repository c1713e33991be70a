#include "OmbrixPlatform/Json.h"

#include <cmath>

#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Json {

Value::Value(std::chrono::sys_seconds instant) : content_(isoInstant(instant)) {}

std::optional<bool> Value::boolean() const {
    if (const bool* b = std::get_if<bool>(&content_)) return *b;
    return std::nullopt;
}

std::optional<std::int64_t> wholeNumber(double d) {
    constexpr double firstOutside = 9223372036854775808.0;  // 2 to the power of 63
    if (d != std::trunc(d) || d < -firstOutside || d >= firstOutside) return std::nullopt;
    return static_cast<std::int64_t>(d);
}

std::optional<std::int64_t> Value::integer() const {
    if (const auto* n = std::get_if<std::int64_t>(&content_)) return *n;
    const double* d = std::get_if<double>(&content_);
    return d == nullptr ? std::nullopt : wholeNumber(*d);
}

std::optional<double> Value::number() const {
    if (const auto* n = std::get_if<std::int64_t>(&content_)) return static_cast<double>(*n);
    if (const double* d = std::get_if<double>(&content_)) return *d;
    return std::nullopt;
}

const Value* Value::member(std::string_view key) const {
    const Members* all = members();
    if (all == nullptr) return nullptr;
    const auto found = all->find(key);
    return found == all->end() ? nullptr : &found->second;
}

Value object(std::initializer_list<Member> members) {
    Members content;
    for (const Member& member : members)
        if (member.value) content.insert_or_assign(member.key, std::move(*member.value));
    return content;
}

class Writer {
  public:
    explicit Writer(Style style) : style_(style) {}

    void write(const Value& value) {
        std::visit([this](const auto& content) { put(content); }, value.content_);
    }
    std::string take() { return std::move(text_); }

  private:
    void put(std::monostate) { text_ += "null"; }
    void put(bool b) { text_ += b ? "true" : "false"; }
    void put(std::int64_t n) { text_ += std::to_string(n); }
    void put(double d) {
        if (!std::isfinite(d))
            throw EncodingError("JSON has no form for the number " + Numbers::described(d));
        // Read back, a whole number is an integer, and there is one zero among those.
        text_ += Numbers::shortest(d == 0 ? 0.0 : d);
    }
    void put(const std::string& s) {
        if (Utf8::isValid(s))
            quote(s);
        else
            quote(Utf8::repaired(s));
    }
    void put(const Array& list) {
        bracketed('[', ']', list, [this](const Value& item) { write(item); });
    }
    void put(const Members& members) {
        bracketed('{', '}', members, [this](const auto& member) {
            put(member.first);
            text_ += style_ == Style::canonical ? ":" : " : ";
            write(member.second);
        });
    }

    template <typename Items, typename PutItem>
    void bracketed(char open, char close, const Items& items, PutItem putItem) {
        text_ += open;
        if (!items.empty()) {
            ++depth_;
            bool first = true;
            for (const auto& item : items) {
                if (!std::exchange(first, false)) text_ += ',';
                newLine();
                putItem(item);
            }
            --depth_;
            newLine();
        }
        text_ += close;
    }

    void newLine() {
        if (style_ == Style::canonical) return;
        text_ += '\n';
        text_.append(depth_ * 2, ' ');
    }

    void quote(std::string_view s) {
        text_ += '"';
        std::size_t plain = 0;  // where the stretch that needs no escape begins
        for (std::size_t i = 0; i < s.size(); ++i) {
            const auto c = static_cast<unsigned char>(s[i]);
            const bool escapes =
                c < 0x20 || c == '"' || c == '\\' || (c == '/' && style_ == Style::envelope);
            if (!escapes) continue;
            text_.append(s, plain, i - plain);
            plain = i + 1;
            escape(c);
        }
        text_.append(s, plain);
        text_ += '"';
    }

    void escape(unsigned char c) {
        constexpr std::string_view named = "\b\f\n\r\t";
        constexpr std::string_view names = "bfnrt";
        text_ += '\\';
        if (const auto at = named.find(static_cast<char>(c)); at != std::string_view::npos) {
            text_ += names[at];
        } else if (c >= 0x20) {
            text_ += static_cast<char>(c);
        } else {
            text_ += "u00";
            Numbers::appendHex(text_, c);
        }
    }

    Style style_;
    std::string text_;
    std::size_t depth_ = 0;
};

std::string write(const Value& value, Style style) {
    Writer writer(style);
    writer.write(value);
    return writer.take();
}
}  // namespace ombrix::Json
