#include "OmbrixEngine/Steps/PrivateSources.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "OmbrixPlatform/Text.h"

namespace ombrix {

PrivateSources::PrivateSources(EngineWorkspace& workspace) {
    const auto isPrivate = [&](const LandSidecar& record) {
        return workspace.isPrivate(record.meetingKey);
    };
    if (std::ranges::none_of(workspace.landed(), isPrivate)) return;
    std::set<std::pair<std::string_view, std::string_view>> shown;
    for (const auto& record : workspace.landed())
        if (!isPrivate(record)) shown.emplace(record.date, record.title);
    for (const auto& record : workspace.landed()) {
        if (!isPrivate(record) || shown.contains({record.date, record.title})) continue;
        auto& titles = titles_[record.date];
        titles.insert(record.title);
        titles.insert(workspace.privacy().cleanedText(record.title));  // as an answer has it
    }
}

bool PrivateSources::areIn(std::string_view text) const {
    constexpr std::string_view dayForm = "2026-08-18";
    if (titles_.empty()) return false;
    for (auto end = text.find(']'); end != text.npos; end = text.find(']', end + 1)) {
        const auto before = text.substr(0, end);
        if (before.size() < dayForm.size()) continue;
        const auto found = titles_.find(before.substr(end - dayForm.size()));
        if (found == titles_.end()) continue;
        const auto isNamed = [&](const std::string& title) {
            return before.ends_with("[" + title + ", " + found->first);
        };
        if (std::ranges::any_of(found->second, isNamed)) return true;
    }
    return false;
}

std::string PrivateSources::without(std::string_view text) const {
    if (!areIn(text)) return std::string(text);
    std::vector<std::string_view> lines = Text::split(text, "\n");
    std::erase_if(lines, [this](std::string_view line) { return areIn(line); });
    return Text::joined(lines, "\n");
}
}  // namespace ombrix
