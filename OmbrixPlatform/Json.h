// JSON: one value model, a strict reader, a writer with three forms.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

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
    Value(bool b) : content_(b) {}
    Value(int n) : content_(static_cast<std::int64_t>(n)) {}
    Value(std::int64_t n) : content_(n) {}
    Value(double d) : content_(d) {}
    Value(const char* s) : content_(std::string(s)) {}
    Value(std::string_view s) : content_(std::string(s)) {}
    Value(std::string s) : content_(std::move(s)) {}
    Value(Array a) : content_(std::move(a)) {}
    Value(Members m) : content_(std::move(m)) {}
    Value(const std::vector<std::string>& strings);

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

// ---- read -------------------------------------------------------------------------------------

/// The text is not JSON.
class SyntaxError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The JSON is not the record. The message begins with the path: "reminders[2].tags: not a list".
class DecodingError : public std::runtime_error {
  public:
    DecodingError(std::string_view path, std::string_view problem);
};

constexpr std::size_t maximalDepth = 512;

/// The value of a whole text. Throws `SyntaxError` for what is not JSON in valid UTF-8, a byte
/// order mark and anything behind the value included, for nesting deeper than `maximalDepth`, and
/// for a number outside the range of a double. Of a key given twice the last one counts.
Value parse(std::string_view text);

/// An object that is being decoded, with the path that led to it. Missing and null are both
/// "nothing" for `optional`; `required` throws for both. A wrong type always throws. Types: bool,
/// std::int64_t, int, double, std::string, std::vector<std::string>,
/// std::map<std::string, std::string>, std::map<std::string, double>.
class Object {
  public:
    /// Throws `DecodingError` when `value` is no object. Keeps a reference to `value`.
    explicit Object(const Value& value, std::string path = {});

    template <typename T>
    T required(std::string_view key) const {
        const Value* found = present(key);
        if (found == nullptr) throw DecodingError(pathOf(key), "missing");
        return decode<T>(*found, key);
    }
    template <typename T>
    std::optional<T> optional(std::string_view key) const {
        const Value* found = present(key);
        if (found == nullptr) return std::nullopt;
        return decode<T>(*found, key);
    }
    /// The member itself; nothing when it is missing or null.
    const Value* present(std::string_view key) const;
    std::string pathOf(std::string_view key) const;

    Object requiredObject(std::string_view key) const;
    std::optional<Object> optionalObject(std::string_view key) const;
    /// The objects of a list; each carries its path. Throws when it is missing or holds another
    /// type.
    std::vector<Object> requiredObjects(std::string_view key) const;
    /// The same; an empty list when the key is missing or null.
    std::vector<Object> optionalObjects(std::string_view key) const;

  private:
    template <typename T>
    T decode(const Value& value, std::string_view key) const;

    const Members* members_;
    std::string path_;
};

// ---- write ------------------------------------------------------------------------------------

/// One member of an object to be written; made from an empty optional it writes no key.
struct Member {
    std::string key;
    std::optional<Value> value;

    template <typename T>
    Member(std::string name, T&& content) : key(std::move(name)), value(std::forward<T>(content)) {}
    template <typename T>
    Member(std::string name, const std::optional<T>& content) : key(std::move(name)) {
        if (content) value.emplace(*content);
    }
};

Value object(std::initializer_list<Member> members);

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
}  // namespace ombrix::Json
