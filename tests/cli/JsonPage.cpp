#include "JsonPage.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "CaseFolder.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {

/// A value as a row describes it, with the members that further rows give it or its items.
struct JsonPage::Field {
    std::string type = "object";
    bool isAlways = true;
    std::map<std::string, Field, std::less<>> members = {};
    bool wasPresent = false;
    bool wasAbsent = false;
};

namespace {

using Problems = std::vector<std::string>;
constexpr std::string_view listOf = "list of ";
constexpr std::string_view mapOf = "map of ";

/// The texts between pairs of `mark`.
std::vector<std::string> between(std::string_view text, std::string_view mark) {
    const auto pieces = Text::split(text, mark);
    std::vector<std::string> result;
    for (std::size_t i = 1; i + 1 < pieces.size(); i += 2) result.emplace_back(pieces[i]);
    return result;
}

bool isScalar(const Json::Value& value, std::string_view type) {
    if (type.starts_with('"'))
        return value.string() && std::ranges::count(between(type, "\""), *value.string()) != 0;
    if (type == "any") return true;
    if (type == "string") return value.string() != nullptr;
    if (type == "integer") return value.integer().has_value();
    if (type == "number") return value.number().has_value();
    if (type == "boolean") return value.boolean().has_value();
    if (type == "object") return value.members() != nullptr;
    throw std::runtime_error("no type of docs/json.md: " + std::string(type));
}

void check(const Json::Value& value, std::string_view type, JsonPage::Field& field,
           const std::string& path, Problems& problems);

/// The members of `object`, unless the page leaves them open by naming none.
void checkMembers(const Json::Members& object, JsonPage::Field& field, const std::string& path,
                  Problems& problems) {
    if (field.members.empty()) return;
    for (const auto& [key, value] : object)
        if (!field.members.contains(key))
            problems.push_back(path + "." + key + ": not on the page");
    for (auto& [key, member] : field.members) {
        const auto found = object.find(key);
        const bool isAbsent = found == object.end();
        (isAbsent ? member.wasAbsent : member.wasPresent) = true;
        if (!isAbsent)
            check(found->second, member.type, member, path + "." + key, problems);
        else if (member.isAlways)
            problems.push_back(path + "." + key + ": missing");
    }
}

void check(const Json::Value& value, std::string_view type, JsonPage::Field& field,
           const std::string& path, Problems& problems) {
    if (type.starts_with(listOf) && value.array()) {
        for (const auto& item : *value.array())
            check(item, type.substr(listOf.size()), field, path + "[]", problems);
    } else if (type.starts_with(mapOf) && value.members()) {
        for (const auto& [key, item] : *value.members())
            check(item, type.substr(mapOf.size()), field, path + "." + key, problems);
    } else if (type.starts_with(listOf) || type.starts_with(mapOf) || !isScalar(value, type)) {
        problems.push_back(path + ": not of the type on the page");
    } else if (value.members()) {
        checkMembers(*value.members(), field, path, problems);
    }
}

void addUnseen(const JsonPage::Field& field, const std::string& path, Problems& result) {
    for (const auto& [key, member] : field.members) {
        if (!member.wasPresent) result.push_back(path + "." + key + " never occurs");
        if (!member.isAlways && !member.wasAbsent)
            result.push_back(path + "." + key + " is never absent");
        addUnseen(member, path + "." + key, result);
    }
}
}  // namespace

JsonPage::JsonPage(const std::string& path) {
    std::shared_ptr<Field> section = std::make_shared<Field>();
    for (const auto& line : linesOf(path)) {
        if (line.starts_with("## ")) {
            section = std::make_shared<Field>();
            auto names = between(line, "`");
            if (names.empty()) names = {line.substr(3)};
            for (const auto& name : names) sections_[name].push_back(section);
        }
        Field* field = section.get();
        if (line.starts_with("| `")) {
            const auto cells = Text::split(line, " | ");
            if (cells.size() < 4) throw std::runtime_error("no row: " + line);
            const std::string steps = between(cells.front(), "`").at(0);
            for (auto step : Text::split(steps, ".")) {
                if (step.ends_with("[]")) step.remove_suffix(2);
                if (step.empty())
                    field->type = "list of object";
                else
                    field = &field->members[std::string(step)];
            }
            field->type = cells[1];
            field->isAlways = cells[2] == "always";
        }
        if (!Text::contains(line, "fields of *")) continue;
        for (const auto& shared : between(line, "*"))
            for (const auto& [key, member] : sections_.at(shared).front()->members)
                field->members.emplace(key, member);
    }
}

Problems JsonPage::problems(const Json::Value& envelope) {
    const Json::Value* const data = envelope.member("data");
    Problems result;
    Field& frame = *sections_.at(data ? "Success" : "Failure").front();
    check(envelope, frame.type, frame, "envelope", result);
    if (!data || !result.empty()) return result;

    const std::string& command = *envelope.member("command")->string();
    const auto found = sections_.find(command);
    if (found == sections_.end()) {
        const bool isDescribed = sections_.contains(command.substr(0, command.find(' ')));
        return isDescribed ? Problems{"\"" + command + "\" is not on the page"} : Problems();
    }
    for (const auto& section : found->second) {
        result.clear();
        check(*data, section->type, *section, "data", result);
        if (result.empty()) break;
    }
    return result;
}

Problems JsonPage::unseen() const {
    Problems result;
    std::set<const Field*> done;  // a section may have two names
    for (const auto& [name, sections] : sections_)
        for (const auto& section : sections)
            if (done.insert(section.get()).second) addUnseen(*section, name, result);
    return result;
}

std::optional<Json::Value> JsonPage::envelopeIn(std::string_view output) {
    const std::size_t before = output.starts_with("{\n") ? 0 : output.find("\n{\n");
    if (before == std::string_view::npos) return std::nullopt;
    try {
        return Json::parse(Text::trimmed(output.substr(before)));
    } catch (const Json::SyntaxError&) {
        return std::nullopt;
    }
}
}  // namespace ombrix::ToolTests
