#include "OmbrixMemoryKit/Skills/SkillTitle.h"

#include <cstddef>

#include "OmbrixMemoryKit/Skills/SkillFile.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::SkillFile {
namespace {

/// The first `size` bytes of a name, without a hyphen at the end.
std::string shortened(std::string_view name, std::size_t size) {
    name = name.substr(0, size);
    while (name.ends_with('-')) name.remove_suffix(1);
    return std::string(name);
}

/// True when a sentence ends with the character at `at` of a text on one line.
bool isSentenceEnd(std::string_view text, std::size_t at) {
    if (text[at] != '.' && text[at] != '!' && text[at] != '?') return false;
    if (at + 1 == text.size()) return true;
    // "e.g. this" goes on.
    return text[at + 1] == ' ' && !(text[at + 2] >= 'a' && text[at + 2] <= 'z');
}
}  // namespace

std::string command(std::string_view name) { return "/" + std::string(name); }

std::string displayName(std::string_view name) {
    std::string title = Text::replacingAll(name, "-", " ");
    if (!title.empty() && title[0] >= 'a' && title[0] <= 'z')
        title[0] = static_cast<char>(title[0] - 'a' + 'A');
    return title;
}

std::string name(std::string_view title) {
    std::string name;
    for (const char c : Text::folded(Text::withStraightApostrophes(title))) {
        if (Text::isAsciiAlphanumeric(c))
            name += c;
        else if (c != '\'' && !name.empty() && !name.ends_with('-'))
            name += '-';
    }
    name = shortened(name, longestName);
    return name.empty() ? "skill" : name;
}

std::string uniqueName(std::string_view base, const std::set<std::string, std::less<>>& taken) {
    std::string name(base);
    for (std::size_t number = 2; taken.contains(name); ++number) {
        const std::string ending = "-" + std::to_string(number);
        name = base.size() + ending.size() <= longestName
                   ? std::string(base)
                   : shortened(base, longestName - ending.size());
        name += ending;
    }
    return name;
}

std::string whatItDoes(std::string_view text) {
    std::string line = Text::flattened(text);
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (!isSentenceEnd(line, at)) continue;
        line.resize(at + 1);
        break;
    }
    line.resize(Utf8::byteOffset(line, longestDescription));
    return line;
}

std::string description(const Skill& skill) {
    std::string line = Text::flattened(skill.description);
    if (line.empty()) line = whatItDoes(skill.prompt);
    return line.empty() ? displayName(skill.name) : line;
}
}  // namespace ombrix::SkillFile
