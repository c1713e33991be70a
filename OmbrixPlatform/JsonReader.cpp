#include <simdjson.h>

#include <algorithm>
#include <memory>

#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Json {
namespace {

namespace dom = simdjson::dom;

Value converted(const dom::element& element, std::size_t depth);

Value convertedArray(const dom::array& list, std::size_t depth) {
    Array values;
    values.reserve(list.size());
    for (const dom::element item : list) values.push_back(converted(item, depth));
    return values;
}

Value convertedObject(const dom::object& object, std::size_t depth) {
    Members members;
    for (const auto& [key, value] : object)
        members.insert_or_assign(std::string(key), converted(value, depth));
    return members;
}

/// `depth` counts the brackets around the element. The parser bounds them too, but does not count
/// an empty pair.
Value converted(const dom::element& element, std::size_t depth) {
    if ((element.is_array() || element.is_object()) && ++depth > maximalDepth)
        throw SyntaxError(simdjson::error_message(simdjson::DEPTH_ERROR));
    switch (element.type()) {
        case dom::element_type::ARRAY:
            return convertedArray(element.get_array().value_unsafe(), depth);
        case dom::element_type::OBJECT:
            return convertedObject(element.get_object().value_unsafe(), depth);
        case dom::element_type::INT64:
            return element.get_int64().value_unsafe();
        case dom::element_type::UINT64:
            return static_cast<double>(element.get_uint64().value_unsafe());
        case dom::element_type::DOUBLE:
            return element.get_double().value_unsafe();
        case dom::element_type::STRING:
            return std::string_view(element.get_string().value_unsafe());
        case dom::element_type::BOOL:
            return element.get_bool().value_unsafe();
        case dom::element_type::NULL_VALUE:
            break;
    }
    return nullptr;
}

bool isNumberByte(char c) {
    return Text::isAsciiDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

/// `text` with an exponent behind each integer that does not fit, which the parser refuses although
/// a double holds it. Strings stay as they are; text that is not JSON stays text that is not JSON.
std::string withLongIntegersAsDoubles(std::string_view text) {
    std::string result;
    bool inString = false;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (inString || !isNumberByte(c)) {
            const std::size_t length = inString && c == '\\' && at + 1 < text.size() ? 2 : 1;
            if (c == '"') inString = !inString;
            result.append(text, at, length);
            at += length;
            continue;
        }
        const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at),
                                          text.end(), isNumberByte);
        const auto number = text.substr(at, static_cast<std::size_t>(end - text.begin()) - at);
        const bool isInteger =
            Text::isAsciiDigit(number.back()) && number.find_first_of(".eE+") == number.npos;
        result += number;
        if (isInteger && !Numbers::parseInteger<std::int64_t>(number)) result += "e0";
        at += number.size();
    }
    return result;
}

dom::element rootOf(dom::parser& parser, std::string_view text) {
    const simdjson::padded_string padded(text);
    dom::element root;
    auto error = parser.parse(padded).get(root);
    if (error == simdjson::NUMBER_ERROR) {
        const simdjson::padded_string widened(withLongIntegersAsDoubles(text));
        error = parser.parse(widened).get(root);
    }
    if (error) throw SyntaxError(simdjson::error_message(error));
    return root;
}
}  // namespace

Value parse(std::string_view text) {
    dom::parser parser;
    // The parser counts one level more than there are brackets around the innermost value.
    if (const auto error = parser.allocate(text.size() + 1, maximalDepth + 1))
        throw SyntaxError(simdjson::error_message(error));
    return converted(rootOf(parser, text), 0);
}

DecodingError::DecodingError(std::string_view path, std::string_view problem)
    : std::runtime_error((path.empty() ? std::string("the record") : std::string(path)) + ": " +
                         std::string(problem)) {}

Object::Object(const Value& value, std::string path)
    : members_(value.members()), path_(std::move(path)) {
    if (members_ == nullptr) throw DecodingError(path_, "not an object");
}

const Value* Object::present(std::string_view key) const {
    const auto found = members_->find(key);
    return found == members_->end() || found->second.isNull() ? nullptr : &found->second;
}

std::string Object::pathOf(std::string_view key) const {
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

template <>
bool Object::decode<bool>(const Value& value, std::string_view key) const {
    if (const auto b = value.boolean()) return *b;
    throw DecodingError(pathOf(key), "not a boolean");
}

template <>
std::int64_t Object::decode<std::int64_t>(const Value& value, std::string_view key) const {
    if (const auto n = value.integer()) return *n;
    throw DecodingError(pathOf(key), "not an integer");
}

template <>
int Object::decode<int>(const Value& value, std::string_view key) const {
    const auto n = decode<std::int64_t>(value, key);
    if (n < INT32_MIN || n > INT32_MAX) throw DecodingError(pathOf(key), "an integer out of range");
    return static_cast<int>(n);
}

template <>
double Object::decode<double>(const Value& value, std::string_view key) const {
    if (const auto d = value.number()) return *d;
    throw DecodingError(pathOf(key), "not a number");
}

template <>
std::string Object::decode<std::string>(const Value& value, std::string_view key) const {
    if (const auto* s = value.string()) return *s;
    throw DecodingError(pathOf(key), "not a string");
}

template <>
std::vector<std::string> Object::decode<std::vector<std::string>>(const Value& value,
                                                                  std::string_view key) const {
    const Array* list = value.array();
    if (list == nullptr) throw DecodingError(pathOf(key), "not a list");
    std::vector<std::string> strings;
    strings.reserve(list->size());
    for (const Value& item : *list) {
        if (item.string() == nullptr) {
            throw DecodingError(pathOf(key) + "[" + std::to_string(strings.size()) + "]",
                                "not a string");
        }
        strings.push_back(*item.string());
    }
    return strings;
}

namespace {

const Members& membersOf(const Value& value, const std::string& path) {
    if (value.members() == nullptr) throw DecodingError(path, "not an object");
    return *value.members();
}
}  // namespace

template <>
std::map<std::string, std::string> Object::decode<std::map<std::string, std::string>>(
    const Value& value, std::string_view key) const {
    std::map<std::string, std::string> strings;
    for (const auto& [name, item] : membersOf(value, pathOf(key))) {
        if (item.string() == nullptr) throw DecodingError(pathOf(key) + "." + name, "not a string");
        strings.emplace(name, *item.string());
    }
    return strings;
}

template <>
std::map<std::string, double> Object::decode<std::map<std::string, double>>(
    const Value& value, std::string_view key) const {
    std::map<std::string, double> numbers;
    for (const auto& [name, item] : membersOf(value, pathOf(key))) {
        if (!item.number()) throw DecodingError(pathOf(key) + "." + name, "not a number");
        numbers.emplace(name, *item.number());
    }
    return numbers;
}

Object Object::requiredObject(std::string_view key) const {
    const Value* found = present(key);
    if (found == nullptr) throw DecodingError(pathOf(key), "missing");
    return Object(*found, pathOf(key));
}

std::optional<Object> Object::optionalObject(std::string_view key) const {
    const Value* found = present(key);
    if (found == nullptr) return std::nullopt;
    return Object(*found, pathOf(key));
}

std::vector<Object> Object::requiredObjects(std::string_view key) const {
    if (present(key) == nullptr) throw DecodingError(pathOf(key), "missing");
    return optionalObjects(key);
}

std::vector<Object> Object::optionalObjects(std::string_view key) const {
    const Value* found = present(key);
    if (found == nullptr) return {};
    if (found->array() == nullptr) throw DecodingError(pathOf(key), "not a list");
    std::vector<Object> objects;
    objects.reserve(found->array()->size());
    for (const Value& item : *found->array())
        objects.emplace_back(item, pathOf(key) + "[" + std::to_string(objects.size()) + "]");
    return objects;
}
}  // namespace ombrix::Json
