#include "OmbrixMemoryKit/Skills/SkillFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Skills/SkillFrontmatter.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::SkillFile {
namespace {

constexpr std::string_view byteOrderMark = "\uFEFF";
constexpr std::string_view delimiter = "---";
constexpr std::string_view nameKey = "name";
constexpr std::string_view descriptionKey = "description";
constexpr std::string_view metadataKey = "metadata";

// ---- lines -------------------------------------------------------------------------------------

std::string_view withoutMark(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    return text;
}

/// The line end of the whole file; LF where they are mixed.
std::string_view lineEndOf(std::string_view text) {
    std::size_t feed = text.find('\n');
    if (feed == text.npos) return text.find('\r') == text.npos ? "\n" : "\r";
    for (; feed != text.npos; feed = text.find('\n', feed + 1))
        if (feed == 0 || text[feed - 1] != '\r') return "\n";
    return "\r\n";
}

bool isDelimiter(std::string_view line) {
    return line.starts_with(delimiter) && Text::trimmed(line).size() == delimiter.size();
}

/// The lines of a text, one at a time.
class Lines {
  public:
    Lines(std::string_view text, std::string_view eol) : rest_(text), eol_(eol) {}
    /// The next line; `hasEnd` tells whether a line end follows it. Nothing at the end of the text.
    std::optional<std::string_view> next() {
        if (rest_.empty()) return std::nullopt;
        const std::size_t end = rest_.find(eol_);
        hasEnd = end != rest_.npos;
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(hasEnd ? end + eol_.size() : rest_.size());
        return line;
    }
    std::string_view rest() const { return rest_; }
    bool hasEnd = false;

  private:
    std::string_view rest_, eol_;
};

/// A file cut at its delimiters.
struct Pieces {
    std::string_view eol, open, close, body;
    std::vector<std::string> frontmatter;
    bool closeEol = false;
};

std::variant<Pieces, SkillProblem> cut(std::string_view text) {
    Pieces pieces{.eol = lineEndOf(text)};
    Lines lines(text, pieces.eol);
    const auto open = lines.next();
    if (!open || !isDelimiter(withoutMark(*open))) return SkillProblem::noFrontmatter;
    pieces.open = *open;
    while (const auto line = lines.next()) {
        if (isDelimiter(*line)) {
            pieces.close = *line;
            pieces.closeEol = lines.hasEnd;
            pieces.body = lines.rest();
            return pieces;
        }
        pieces.frontmatter.emplace_back(*line);
    }
    return SkillProblem::frontmatterNotClosed;
}

/// The body's blank lines first, its text, its white space last.
struct Body {
    std::string_view lead, prompt, tail;
};

Body bodyOf(std::string_view body, std::string_view eol) {
    Lines lines(body, eol);
    std::size_t lead = 0;
    while (const auto line = lines.next()) {
        if (!Text::trimmed(*line).empty()) break;
        lead = body.size() - lines.rest().size();
    }
    const std::string_view rest = body.substr(lead);
    const std::string_view trimmed = Text::trimmed(rest);
    const std::size_t end =
        trimmed.empty() ? 0
                        : static_cast<std::size_t>(trimmed.data() - rest.data()) + trimmed.size();
    return {body.substr(0, lead), rest.substr(0, end), rest.substr(end)};
}

// ---- fields ------------------------------------------------------------------------------------

/// The first entry with that key; null without one.
template <typename Entries>
auto* find(Entries& entries, std::string_view key) {
    const auto found = std::ranges::find_if(
        entries, [&](const FrontmatterEntry& entry) { return entry.key == key; });
    return found == entries.end() ? nullptr : &*found;
}

struct FieldProblems {
    SkillProblem missing, unreadable;
    std::optional<std::string_view> (*problem)(std::string_view);
};

std::variant<std::string, SkillProblem> field(const std::vector<FrontmatterEntry>& entries,
                                              std::string_view key, const FieldProblems& problems) {
    const FrontmatterEntry* entry = find(entries, key);
    if (entry == nullptr) return problems.missing;
    auto scalar = SkillFrontmatter::scalar(*entry);
    if (!scalar) return problems.unreadable;
    if (const auto problem = problems.problem(scalar->value)) return SkillProblem{*problem};
    return std::move(scalar->value);
}

std::optional<SkillOutput> outputOf(const std::vector<FrontmatterEntry>& entries) {
    const FrontmatterEntry* metadata = find(entries, metadataKey);
    if (metadata == nullptr) return std::nullopt;
    const auto scalar = SkillFrontmatter::nestedScalar(*metadata, outputKey);
    if (!scalar) return std::nullopt;
    return output(scalar->value);
}

/// White space, and the characters that take no place or look like it.
bool isSpace(char32_t scalar) {
    constexpr auto invisible =
        std::to_array<char32_t>({0x180E, 0x200B, 0x2060, 0x2800, 0x3164, 0xFEFF});
    return Text::isWhiteSpace(scalar) || std::ranges::find(invisible, scalar) != invisible.end();
}

bool holdsSpace(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (isSpace(scalar)) return true;
        at += length;
    }
    return false;
}

// ---- writing -----------------------------------------------------------------------------------

void setScalar(std::vector<FrontmatterEntry>& entries, std::string_view key,
               std::string_view written) {
    FrontmatterEntry* entry = find(entries, key);
    if (entry == nullptr) return;
    if (const auto scalar = SkillFrontmatter::scalar(*entry))
        *entry = SkillFrontmatter::replacing(*entry, scalar->range, written);
}

void setOutput(std::vector<FrontmatterEntry>& entries, SkillOutput output) {
    const std::string_view raw = rawValue(output);
    if (FrontmatterEntry* metadata = find(entries, metadataKey)) {
        *metadata = SkillFrontmatter::settingNested(*metadata, outputKey, raw);
        return;
    }
    // As deep as the keys that are there.
    const auto first = std::ranges::find_if(
        entries, [](const FrontmatterEntry& entry) { return entry.key.has_value(); });
    std::string blanks;
    if (first != entries.end()) {
        const std::string& line = first->lines.front();
        blanks = line.substr(0, YamlScalars::indentation(line));
    }
    const FrontmatterEntry empty{.key = std::string(metadataKey),
                                 .lines = {blanks + std::string(metadataKey) + ":"}};
    entries.push_back(SkillFrontmatter::settingNested(empty, outputKey, raw));
}
}  // namespace

SkillOutput output(std::string_view text) {
    return fromRawValue<SkillOutput>(text).value_or(SkillOutput::doc);
}

std::optional<std::string_view> nameProblem(std::string_view name) {
    const auto isAllowed = [](char c) {
        return Text::isAsciiDigit(c) || (c >= 'a' && c <= 'z') || c == '-';
    };
    if (name.empty()) return "The name is empty";
    if (Utf8::utf16Length(name) > longestName) return "The name is longer than 64 characters";
    if (holdsSpace(name)) return "The name has spaces";
    if (std::ranges::any_of(name, [](char c) { return c >= 'A' && c <= 'Z'; }))
        return "The name has capital letters";
    if (!std::ranges::all_of(name, isAllowed))
        return "The name can only have letters, numbers and hyphens";
    if (name.starts_with('-') || name.ends_with('-'))
        return "The name starts or ends with a hyphen";
    if (Text::contains(name, "--")) return "The name has two hyphens in a row";
    return std::nullopt;
}

std::optional<std::string_view> descriptionProblem(std::string_view description) {
    if (description.empty()) return "The description is empty";
    if (Utf8::utf16Length(description) > longestDescription)
        return "The description is longer than 1024 characters";
    return std::nullopt;
}

std::variant<Skill, SkillProblem> parse(std::string_view text, SkillOrigin origin, Instant editedAt,
                                        std::vector<std::string> files) {
    if (!Utf8::isValid(text)) return SkillProblem::skillFileUnreadable;
    auto cutText = cut(text);
    if (const auto* problem = std::get_if<SkillProblem>(&cutText)) return *problem;
    const auto& pieces = std::get<Pieces>(cutText);
    auto entries = SkillFrontmatter::groupEntries(pieces.frontmatter);
    if (!entries || entries->empty()) return SkillProblem::frontmatterUnreadable;

    auto name =
        field(*entries, nameKey, {SkillProblem::noName, SkillProblem::nameUnreadable, nameProblem});
    if (const auto* problem = std::get_if<SkillProblem>(&name)) return *problem;
    auto description = field(
        *entries, descriptionKey,
        {SkillProblem::noDescription, SkillProblem::descriptionUnreadable, descriptionProblem});
    if (const auto* problem = std::get_if<SkillProblem>(&description)) return *problem;

    const Body body = bodyOf(pieces.body, pieces.eol);
    SkillSource::Read read{.name = std::get<std::string>(std::move(name)),
                           .description = std::get<std::string>(std::move(description)),
                           .prompt = Text::replacingAll(body.prompt, pieces.eol, "\n"),
                           .output = outputOf(*entries)};
    Skill skill{.name = read.name,
                .description = read.description,
                .prompt = read.prompt,
                .output = read.output.value_or(SkillOutput::doc),
                .origin = origin,
                .editedAt = editedAt,
                .runnable = !read.prompt.empty(),
                .files = std::move(files)};
    skill.source = SkillSource{.eol = std::string(pieces.eol),
                               .entries = std::move(*entries),
                               .read = std::move(read),
                               .open = std::string(pieces.open),
                               .close = std::string(pieces.close),
                               .closeEol = pieces.closeEol,
                               .lead = std::string(body.lead),
                               .tail = std::string(body.tail)};
    return skill;
}

std::string serialize(const Skill& skill) {
    std::string text = "---\nname: " + skill.name;
    text += "\ndescription: " + YamlScalars::written(skill.description);
    text += "\nmetadata:\n  ";
    ((text += outputKey) += ": ") += rawValue(skill.output);
    return text + "\n---\n" + skill.prompt + "\n";
}

std::string rewrite(const Skill& skill, const SkillSource& source) {
    const SkillSource::Read& read = source.read;
    std::vector<FrontmatterEntry> entries = source.entries;
    if (skill.name != read.name) setScalar(entries, nameKey, skill.name);
    if (skill.description != read.description)
        setScalar(entries, descriptionKey, YamlScalars::written(skill.description));
    if (skill.output != read.output.value_or(SkillOutput::doc)) setOutput(entries, skill.output);

    const std::string& eol = source.eol;
    std::string text = source.open + eol;
    for (const FrontmatterEntry& entry : entries)
        for (const std::string& line : entry.lines) (text += line) += eol;
    text += source.close;
    if (source.closeEol) text += eol;
    text += source.lead;
    if (skill.prompt == read.prompt)
        return text + Text::replacingAll(read.prompt, "\n", eol) + source.tail;

    const std::string given = Text::withLineFeeds(skill.prompt);
    const std::string_view prompt = bodyOf(given, "\n").prompt;
    // Text cannot follow the closing delimiter, or blanks, on the same line.
    const bool isOnNewLine = text.ends_with(eol);
    if (!prompt.empty() && !isOnNewLine) text += eol;
    text += Text::replacingAll(prompt, "\n", eol);
    return text + (read.prompt.empty() && source.tail.empty() ? eol : source.tail);
}
}  // namespace ombrix::SkillFile
