#include "OmbrixPlatform/JsonDecoding.h"

#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/Characters.h"

namespace ombrix::Json {

namespace {

constexpr std::size_t longestFound = 120;  // characters

std::string shown(Node node) {
    if (node.isList()) return "a list";
    if (node.isObject()) return "an object";
    if (const auto text = node.string()) {
        const auto start = Characters::prefix(*text, longestFound);
        const std::string cut(start.size() < text->size() ? "…" : "");
        return write(std::string(start) + cut, Style::canonical);
    }
    return write(node.value(), Style::canonical);
}
}  // namespace

DecodingError::DecodingError(std::string_view path, std::string_view problem,
                             std::string foundThere)
    : DecodingError((path.empty() ? std::string("the record") : std::string(path)) + ": " +
                        std::string(problem),
                    std::string(path), std::string(problem), std::move(foundThere)) {}

std::string Element::path() const {
    if (outer_ == nullptr) return {};
    std::string path = outer_->path();
    if (!key_) return path + "[" + std::to_string(index_) + "]";
    if (!path.empty()) path += '.';
    return path.append(*key_);
}

void Element::fail(std::string_view problem) const {
    throw DecodingError(path(), problem, shown(node_));
}

Object::Object(const Element& element) : element_(element) {
    if (!element.node().isObject()) element.fail("not an object");
    for (const auto& [key, node] : element.node().members())
        members_.push_back({.key = key, .node = node});
}

const Object::Member* Object::find(std::string_view key) const {
    const Member* found = nullptr;
    for (const Member& member : members_) {
        if (member.key != key) continue;
        member.isKnown = true;
        found = &member;
    }
    return found;
}

const Node* Object::present(std::string_view key) const {
    const Member* member = find(key);
    return member == nullptr || member->node.isNull() ? nullptr : &member->node;
}

void Object::fail(std::string_view key, std::string_view problem) const {
    const Member* member = find(key);
    if (member != nullptr) Element(member->node, element_, key).fail(problem);
    throw DecodingError(Element(element_.node(), element_, key).path(), problem);
}

void Object::refuseUnknownKeys() const {
    for (const Member& member : members_)
        if (!member.isKnown) fail(member.key, "unknown key");
}

bool decode(As<bool>, const Element& in) {
    const auto value = in.node().boolean();
    if (!value) in.fail("not a boolean");
    return *value;
}

std::int64_t decode(As<std::int64_t>, const Element& in) {
    const auto value = in.node().integer();
    if (!value) in.fail("not an integer");
    return *value;
}

int decode(As<int>, const Element& in) {
    const auto value = in.as<std::int64_t>();
    if (value < INT32_MIN || value > INT32_MAX) in.fail("an integer out of range");
    return static_cast<int>(value);
}

double decode(As<double>, const Element& in) {
    const auto value = in.node().number();
    if (!value) in.fail("not a number");
    return *value;
}

std::string decode(As<std::string>, const Element& in) {
    const auto value = in.node().string();
    if (!value) in.fail("not a string");
    return std::string(*value);
}

std::chrono::sys_seconds decode(As<std::chrono::sys_seconds>, const Element& in) {
    const auto text = in.node().string();
    const auto instant = text ? parseIsoInstant(*text) : std::nullopt;
    if (!instant) in.fail("not an instant");
    return *instant;
}

Value decode(As<Value>, const Element& in) { return in.node().value(); }
}  // namespace ombrix::Json
