// JSON values and their text: one value model and a writer with three forms. JsonDocument.h reads
// texts, JsonDecoding.h makes records of them.
#pragma once

#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <ranges>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix::Json {

class Value;
using Array = std::vector<Value>;
using Members =
    std::map<std::string, Value, std::less<>>;  // keys in byte order, as they are written

/// Numbers keep the kind they were written in: an integer that fits 64 signed bits, else a double.
class Value {
  public:
    Value() = default;  // null
    Value(std::nullptr_t) {}
    Value(std::same_as<bool> auto b) : content_(b) {}
    Value(int n) : content_(static_cast<std::int64_t>(n)) {}
    Value(std::int64_t n) : content_(n) {}
    Value(double d) : content_(d) {}
    Value(const char* s) : content_(std::string(s)) {}
    Value(std::string_view s) : content_(std::string(s)) {}
    Value(std::string s) : content_(std::move(s)) {}
    Value(Array a) : content_(std::move(a)) {}
    Value(Members m) : content_(std::move(m)) {}
    /// An instant is the string that `isoInstant` gives.
    Value(std::chrono::sys_seconds instant);

    bool isNull() const { return std::holds_alternative<std::monostate>(content_); }
    /// The content when it is of that kind, else nothing; the pointers are the value's own.
    std::optional<bool> boolean() const;
    std::optional<std::int64_t> integer() const;  ///< 3 and 3.0, not 3.5
    std::optional<double> number() const;
    const std::string* string() const { return std::get_if<std::string>(&content_); }
    const Array* array() const { return std::get_if<Array>(&content_); }
    const Members* members() const { return std::get_if<Members>(&content_); }
    /// The member of that key; nothing for a missing key and for a value that is no object.
    const Value* member(std::string_view key) const;

    bool operator==(const Value&) const = default;

  private:
    friend class Writer;
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Array, Members> content_;
};

/// `d` as an integer; nothing for a fraction and for what does not fit.
std::optional<std::int64_t> wholeNumber(double d);

// ---- records to values ------------------------------------------------------------------------

/// A record with a function `encode` beside it.
template <typename T>
concept Encodable = requires(T&& content) {
    { encode(std::forward<T>(content)) } -> std::convertible_to<Value>;
};

/// The value of anything that JSON can hold: strings, numbers and the like; an enumeration with its
/// table; a record with an `encode` beside it; lists, sets and maps of these; an optional, which is
/// null when empty. An rvalue is moved from, all the way down.
template <typename T>
Value toValue(T&& content);

/// One member of an object that is being written. An empty optional writes no key.
struct Member {
    std::string key;
    mutable std::optional<Value> value;  ///< `object` moves it out of the list it comes in

    template <typename T>
    Member(std::string name, T&& content)
        : key(std::move(name)), value(valueOf(std::forward<T>(content))) {}

  private:
    template <typename T>
    static std::optional<Value> valueOf(T&& content) {
        if constexpr (
            requires { typename std::remove_cvref_t<T>::value_type; } &&
            requires { std::forward<T>(content).has_value(); }) {
            if (!content.has_value()) return std::nullopt;
            return toValue(*std::forward<T>(content));
        } else {
            return toValue(std::forward<T>(content));
        }
    }
};

/// An object of these members; of a key given twice the last one counts. Copies no value:
///
///   Json::Value encode(Note note) {
///       return Json::object({{"id", note.id}, {"text", std::move(note.text)}});
///   }
Value object(std::initializer_list<Member> members);

// ---- values to text ---------------------------------------------------------------------------

enum class Style {
    envelope,   ///< two-space indentation, `"key" : value`, "/" as `\/`: what is printed
    file,       ///< the same with "/" plain: records on disk
    canonical,  ///< no white space, "/" plain: what is hashed
};

/// A number that JSON cannot hold (infinite, or no number).
class EncodingError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The text of a value, keys in ascending byte order, without a line feed at its end. Strings that
/// are not valid UTF-8 are repaired. Throws `EncodingError`.
std::string write(const Value& value, Style style);

// ---- implementation ---------------------------------------------------------------------------

template <typename T>
Value toValue(T&& content) {
    using Content = std::remove_cvref_t<T>;
    constexpr bool mayMove = !std::is_reference_v<T> && !std::is_const_v<T>;
    const auto forwarded = [](auto& item) -> decltype(auto) {
        if constexpr (mayMove)
            return std::move(item);
        else
            return std::as_const(item);
    };
    if constexpr (std::constructible_from<Value, T&&>) {
        return Value(std::forward<T>(content));
    } else if constexpr (Encodable<T>) {
        return encode(std::forward<T>(content));
    } else if constexpr (EnumNames::Named<Content>) {
        return Value(rawValue(content));
    } else if constexpr (requires { content.has_value(); }) {
        return content.has_value() ? toValue(*std::forward<T>(content)) : Value();
    } else if constexpr (requires { typename Content::mapped_type; }) {
        Members members;
        for (auto& [key, item] : content) {
            if constexpr (EnumNames::Named<typename Content::key_type>)
                members.emplace(rawValue(key), toValue(forwarded(item)));
            else
                members.emplace(key, toValue(forwarded(item)));
        }
        return members;
    } else {
        static_assert(std::ranges::range<Content>, "no `encode` beside this type");
        Array list;
        if constexpr (std::ranges::sized_range<Content>) list.reserve(std::ranges::size(content));
        for (auto&& item : content) list.push_back(toValue(forwarded(item)));
        return list;
    }
}
}  // namespace ombrix::Json
