// Records from JSON. A record's decoder is a function `decode` beside it, found by overload:
//
//   Reminder decode(Json::As<Reminder>, const Json::Object& in) {
//       return {.id = in.required<std::string>("id"),
//               .tags = in.required<std::set<std::string>>("tags"),
//               .parts = in.required<std::vector<Part>>("parts"),  // Part has its own
//               .due = in.optional<ISODate>("due")};
//   }
//
// and a text is read by `Json::decode<Reminder>(text)`. Lists, sets, maps and optionals of records,
// of enumerations with a table (EnumNames.h), of strings and of numbers need no code of their own.
// A type that is not written as an object takes its element instead:
//
//   ISODate decode(Json::As<ISODate>, const Json::Element& in);  // uses in.as<std::string>()
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::Json {

/// The JSON is not the record. The message begins with the path: "reminders[2].tags: not a list".
class DecodingError : public std::runtime_error {
  public:
    /// `foundThere` is what the JSON has at the path.
    DecodingError(std::string_view path, std::string_view problem, std::string foundThere = {});
    /// Of a record that has the right shape but not the right content: the message is the problem
    /// alone.
    explicit DecodingError(const std::string& problem) : DecodingError(problem, {}, {}, {}) {}
    static DecodingError ofContent(const std::string& problem, std::string path,
                                   std::string foundThere = {}) {
        return {problem, std::move(path), problem, std::move(foundThere)};
    }

    /// Empty for the record as a whole, and where no path is known.
    const std::string& path() const { return path_; }
    const std::string& problem() const { return problem_; }
    /// A string, number or boolean as JSON, a long one cut; "a list" or "an object"; empty for what
    /// is missing.
    const std::string& found() const { return found_; }

  private:
    DecodingError(const std::string& message, std::string path, std::string problem,
                  std::string foundThere)
        : std::runtime_error(message),
          path_(std::move(path)),
          problem_(problem.empty() ? message : std::move(problem)),
          found_(std::move(foundThere)) {}

    std::string path_, problem_, found_;
};

/// How strictly a record is read.
enum class Reading {
    stored,  ///< our own files: unknown keys are ignored, an optional key may be missing or null
    answer,  ///< a model's answer: unknown keys are refused, at any level, and an optional key may
             ///< be null but not missing
};

/// Names the type that a decoder gives.
template <typename T>
struct As {};

class Element;
class Object;

/// The record of a whole text. Throws `SyntaxError` and `DecodingError`.
template <typename T>
T decode(std::string_view text, Reading reading = Reading::stored);
/// The record of a part of a document.
template <typename T>
T decode(Node node, Reading reading = Reading::stored);

// ---- what a decoder reads from ----------------------------------------------------------------

/// One value on its way into a record: the node, and the path that led to it, which costs nothing
/// until an error names it. Lives on the stack of the decoder around it.
class Element {
  public:
    Node node() const { return node_; }
    /// The value as another type; throws `DecodingError`.
    template <typename T>
    T as() const;
    /// Throws `DecodingError` with the path of this element.
    [[noreturn]] void fail(std::string_view problem) const;

    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

  private:
    friend class Object;
    template <typename T>
    friend T decode(Node node, Reading reading);
    friend struct Elements;
    Element(Node node, Reading reading) : node_(node), reading_(reading) {}
    Element(Node node, const Element& outer, std::string_view key)
        : node_(node), reading_(outer.reading_), outer_(&outer), key_(key) {}
    Element(Node node, const Element& outer, std::size_t index)
        : node_(node), reading_(outer.reading_), outer_(&outer), index_(index) {}
    std::string path() const;

    Node node_;
    Reading reading_;
    const Element* outer_ = nullptr;
    std::optional<std::string_view> key_;  // of an object's member; an item of a list has an index
    std::size_t index_ = 0;
};

/// An object that is being decoded. A wrong type always throws `DecodingError`.
class Object {
  public:
    /// Throws for a key that is missing or null.
    template <typename T>
    T required(std::string_view key) const;
    /// Nothing for null; for a missing key nothing when a stored file is read, and an error when a
    /// model's answer is.
    template <typename T>
    std::optional<T> optional(std::string_view key) const;
    /// An empty `T` for a missing key, in a model's answer too; throws for null.
    template <typename T>
    T orEmpty(std::string_view key) const;
    /// True when the key is there and not null. It counts as a key that the record knows.
    bool has(std::string_view key) const { return present(key) != nullptr; }
    /// Throws `DecodingError` for a member: "parts[2].kind: ...".
    [[noreturn]] void fail(std::string_view key, std::string_view problem) const;

    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

  private:
    friend class Element;
    struct Member {
        std::string_view key;
        Node node;
        mutable bool isKnown = false;
    };
    explicit Object(const Element& element);
    /// The last member of that key, null or not.
    const Member* find(std::string_view key) const;
    const Node* present(std::string_view key) const;
    void refuseUnknownKeys() const;

    const Element& element_;
    std::vector<Member> members_;
};

// ---- implementation ---------------------------------------------------------------------------

bool decode(As<bool>, const Element& in);
int decode(As<int>, const Element& in);
std::int64_t decode(As<std::int64_t>, const Element& in);
double decode(As<double>, const Element& in);
std::string decode(As<std::string>, const Element& in);
/// A string that `parseIsoInstant` reads.
std::chrono::sys_seconds decode(As<std::chrono::sys_seconds>, const Element& in);
Value decode(As<Value>, const Element& in);

/// Steps into lists and maps.
struct Elements {
    template <typename Take>
    static void ofList(const Element& in, Take take) {
        if (!in.node().isList()) in.fail("not a list");
        std::size_t index = 0;
        for (const Node item : in.node().items()) take(Element(item, in, index++));
    }
    template <typename Take>
    static void ofMap(const Element& in, Take take) {
        if (!in.node().isObject()) in.fail("not an object");
        for (const auto& [key, item] : in.node().members()) take(key, Element(item, in, key));
    }
};

template <typename T>
std::vector<T> decode(As<std::vector<T>>, const Element& in) {
    std::vector<T> list;
    Elements::ofList(in, [&](const Element& item) { list.push_back(item.as<T>()); });
    return list;
}

template <typename T, typename Order>
std::set<T, Order> decode(As<std::set<T, Order>>, const Element& in) {
    std::set<T, Order> items;
    Elements::ofList(in, [&](const Element& item) { items.insert(item.as<T>()); });
    return items;
}

template <typename T>
std::optional<T> decode(As<std::optional<T>>, const Element& in) {
    if (in.node().isNull()) return std::nullopt;
    return in.as<T>();
}

template <typename Key, typename T, typename Order>
std::map<Key, T, Order> decode(As<std::map<Key, T, Order>>, const Element& in) {
    std::map<Key, T, Order> entries;
    Elements::ofMap(in, [&](std::string_view key, const Element& item) {
        if constexpr (EnumNames::Named<Key>) {
            const auto known = fromRawValue<Key>(key);
            if (!known) item.fail("unknown key");
            entries.insert_or_assign(*known, item.as<T>());
        } else {
            entries.insert_or_assign(Key(key), item.as<T>());
        }
    });
    return entries;
}

template <EnumNames::Named Enum>
Enum decode(As<Enum>, const Element& in) {
    const auto text = in.as<std::string>();
    const auto value = fromRawValue<Enum>(text);
    if (!value) in.fail("unknown value \"" + text + "\"");
    return *value;
}

template <typename T>
T Element::as() const {
    if constexpr (requires(const Object& object) { decode(As<T>(), object); }) {
        const Object object(*this);
        T record = decode(As<T>(), object);
        if (reading_ == Reading::answer) object.refuseUnknownKeys();
        return record;
    } else {
        return decode(As<T>(), *this);
    }
}

template <typename T>
T Object::required(std::string_view key) const {
    const Node* node = present(key);
    if (node == nullptr) fail(key, "missing");
    return Element(*node, element_, key).as<T>();
}

template <typename T>
std::optional<T> Object::optional(std::string_view key) const {
    const Member* member = find(key);
    if (member == nullptr && element_.reading_ == Reading::answer) fail(key, "missing");
    if (member == nullptr || member->node.isNull()) return std::nullopt;
    return Element(member->node, element_, key).as<T>();
}

template <typename T>
T Object::orEmpty(std::string_view key) const {
    return find(key) == nullptr ? T() : required<T>(key);
}

template <typename T>
T decode(Node node, Reading reading) {
    return Element(node, reading).as<T>();
}

template <typename T>
T decode(std::string_view text, Reading reading) {
    const Document document(text);
    return decode<T>(document.root(), reading);
}
}  // namespace ombrix::Json
