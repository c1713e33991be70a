#include "OmbrixPlatform/JsonDocument.h"

#include <simdjson.h>

#include <algorithm>
#include <bit>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Json {

namespace dom = simdjson::dom;

/// The parser's types are two words each, a document and a place in it, and so is a `Handle`.
struct NodeAccess {
    static Node node(dom::element element) { return Node(handle(element)); }
    static dom::element element(const Node& node) { return as<dom::element>(node.handle_); }

    template <typename Entry, typename Container>
    static Node::Range<Entry> range(const Container& container) {
        return Node::Range<Entry>(handle(container.begin()), handle(container.end()));
    }
    template <typename Entry>
    static Node::Range<Entry> noRange() {
        return Node::Range<Entry>({}, {});
    }

    template <typename Type>
    static Type as(const Node::Handle& handle) {
        static_assert(sizeof(Type) == sizeof(Node::Handle));
        return std::bit_cast<Type>(handle);
    }
    template <typename Type>
    static Node::Handle handle(Type type) {
        static_assert(sizeof(Type) == sizeof(Node::Handle));
        return std::bit_cast<Node::Handle>(type);
    }
};

template <>
Node Node::Range<Node>::Iterator::operator*() const {
    return NodeAccess::node(*NodeAccess::as<dom::array::iterator>(at_));
}

template <>
Node::Range<Node>::Iterator& Node::Range<Node>::Iterator::operator++() {
    auto iterator = NodeAccess::as<dom::array::iterator>(at_);
    at_ = NodeAccess::handle(++iterator);
    return *this;
}

template <>
Node::Member Node::Range<Node::Member>::Iterator::operator*() const {
    const auto iterator = NodeAccess::as<dom::object::iterator>(at_);
    return {iterator.key(), NodeAccess::node(iterator.value())};
}

template <>
Node::Range<Node::Member>::Iterator& Node::Range<Node::Member>::Iterator::operator++() {
    auto iterator = NodeAccess::as<dom::object::iterator>(at_);
    at_ = NodeAccess::handle(++iterator);
    return *this;
}

namespace {

dom::element elementOf(const Node& node) { return NodeAccess::element(node); }

bool isNumberByte(char c) {
    return Text::isAsciiDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

/// `text` with an exponent after each integer that does not fit, which the parser refuses although
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

/// What the parser says of an error; its own table is a part of its library that our programs would
/// then have to load at every start (cmake/program/SimdjsonOnDemand.cpp).
const char* messageOf(simdjson::error_code error) {
    switch (error) {
        case simdjson::CAPACITY:
            return "This parser can't support a document that big";
        case simdjson::MEMALLOC:
            return "Error allocating memory, we're most likely out of memory";
        case simdjson::DEPTH_ERROR:
            return "The JSON document was too deep (too many nested objects and arrays)";
        case simdjson::STRING_ERROR:
            return "Problem while parsing a string";
        case simdjson::T_ATOM_ERROR:
            return "Problem while parsing an atom starting with the letter 't'";
        case simdjson::F_ATOM_ERROR:
            return "Problem while parsing an atom starting with the letter 'f'";
        case simdjson::N_ATOM_ERROR:
            return "Problem while parsing an atom starting with the letter 'n'";
        case simdjson::NUMBER_ERROR:
            return "Problem while parsing a number";
        case simdjson::UTF8_ERROR:
            return "The input is not valid UTF-8";
        case simdjson::EMPTY:
            return "Empty: no JSON found";
        case simdjson::UNESCAPED_CHARS:
            return "Within strings, some characters must be escaped, we found unescaped characters";
        case simdjson::UNCLOSED_STRING:
            return "A string is opened, but never closed.";
        default:
            return "The JSON document has an improper structure: missing or superfluous commas, "
                   "braces, missing keys, etc.";
    }
}

/// True when brackets are nested deeper than `left`; recurses no deeper than the parser went.
bool isDeeper(const Node& node, std::size_t left) {
    if (!node.isList() && !node.isObject()) return false;
    if (left == 0) return true;
    for (const Node item : node.items())
        if (isDeeper(item, left - 1)) return true;
    for (const auto& [key, item] : node.members())
        if (isDeeper(item, left - 1)) return true;
    return false;
}
}  // namespace

// ---- documents --------------------------------------------------------------------------------

struct Document::Parsed {
    dom::parser parser;
    dom::element root;

    /// `text` has the bytes after it that the parser may touch. Throws `SyntaxError`.
    void read(std::string_view text) {
        auto error = readWithinDepth(text);
        if (error == simdjson::NUMBER_ERROR) {
            const simdjson::padded_string readable(withLongIntegersAsDoubles(text));
            error = readWithinDepth(readable);
        }
        if (error) throw SyntaxError(messageOf(error));
    }

  private:
    /// The parser counts one level more than there are brackets around the innermost value, but
    /// none for an empty pair. What passes with `maximalDepth` of its levels is never too deep; the
    /// rare text between that and the limit is measured.
    simdjson::error_code readWithinDepth(std::string_view text) {
        auto error = parse(text, maximalDepth);
        if (error != simdjson::DEPTH_ERROR) return error;
        error = parse(text, maximalDepth + 1);
        if (!error && isDeeper(NodeAccess::node(root), maximalDepth)) return simdjson::DEPTH_ERROR;
        return error;
    }

    simdjson::error_code parse(std::string_view text, std::size_t depth) {
        const bool hasRoom = parser.capacity() > text.size() && parser.max_depth() == depth;
        if (!hasRoom) {
            if (const auto error = parser.allocate(text.size() + 1, depth)) return error;
        }
        constexpr bool hasPadding = true;
        return parser.parse(text.data(), text.size(), !hasPadding).get(root);
    }
};

Document::Document(std::string_view text) : parsed_(std::make_unique<Parsed>()) {
    parsed_->read(simdjson::padded_string(text));
}

Document::~Document() = default;
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(Document&&) noexcept = default;

Node Document::root() const& { return NodeAccess::node(parsed_->root); }

Parser::Parser() : parsed_(std::make_unique<Document::Parsed>()) {}
Parser::~Parser() = default;
Parser::Parser(Parser&&) noexcept = default;
Parser& Parser::operator=(Parser&&) noexcept = default;

Node Parser::parse(std::string_view text) {
    buffer_.assign(text);
    buffer_.resize(text.size() + simdjson::SIMDJSON_PADDING);
    parsed_->read(std::string_view(buffer_).substr(0, text.size()));
    return NodeAccess::node(parsed_->root);
}

Value parse(std::string_view text) {
    const Document document(text);
    return document.root().value();
}

// ---- nodes ------------------------------------------------------------------------------------

bool Node::isNull() const { return elementOf(*this).is_null(); }
bool Node::isList() const { return elementOf(*this).is_array(); }
bool Node::isObject() const { return elementOf(*this).is_object(); }

std::optional<bool> Node::boolean() const {
    bool value = false;
    if (elementOf(*this).get_bool().get(value)) return std::nullopt;
    return value;
}

std::optional<std::int64_t> Node::integer() const {
    const auto element = elementOf(*this);
    std::int64_t value = 0;
    if (!element.get_int64().get(value)) return value;
    const auto wide = number();
    return wide ? wholeNumber(*wide) : std::nullopt;
}

std::optional<double> Node::number() const {
    double value = 0;
    if (elementOf(*this).get_double().get(value)) return std::nullopt;
    return value;
}

std::optional<std::string_view> Node::string() const {
    std::string_view value;
    if (elementOf(*this).get_string().get(value)) return std::nullopt;
    return value;
}

std::optional<Node> Node::member(std::string_view key) const {
    std::optional<Node> found;
    for (const auto& [name, node] : members())
        if (name == key) found = node;
    return found;
}

Node::Range<Node> Node::items() const {
    dom::array list;
    if (elementOf(*this).get_array().get(list)) return NodeAccess::noRange<Node>();
    return NodeAccess::range<Node>(list);
}

Node::Range<Node::Member> Node::members() const {
    dom::object object;
    if (elementOf(*this).get_object().get(object)) return NodeAccess::noRange<Member>();
    return NodeAccess::range<Member>(object);
}

Value Node::value() const {
    const auto element = elementOf(*this);
    switch (element.type()) {
        case dom::element_type::ARRAY: {
            Array list;
            for (const Node item : items()) list.push_back(item.value());
            return list;
        }
        case dom::element_type::OBJECT: {
            Members copies;
            for (const auto& [key, node] : members())
                copies.insert_or_assign(std::string(key), node.value());
            return copies;
        }
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
}  // namespace ombrix::Json
