#include "OmbrixMarkdownKit/Import/LifelogReader.h"

#include "OmbrixMarkdownKit/Import/JsonDates.h"
#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Import/MarkdownReader.h"

namespace ombrix::TranscriptImport {
namespace {

std::string_view quoteSpeaker(const std::optional<Json::Node>& name,
                              const std::optional<Json::Node>& identifier) {
    if (stringIn(identifier) == "user") return "Me";
    return stringIn(name).value_or("");  // no name is the unknown speaker's
}

/// Recurses no deeper than a document nests.
void walk(const Json::Node& contents, std::vector<Turn>& turns) {
    static constexpr auto keys = std::to_array<std::string_view>(
        {"type", "content", "speakerName", "speakerIdentifier", "children"});
    for (const Json::Node element : contents.items()) {
        const auto [type, content, name, identifier, children] = fields(element, keys);
        if (stringIn(type) == "blockquote")
            append(turns, quoteSpeaker(name, identifier), stringIn(content).value_or(""));
        if (children) walk(*children, turns);
    }
}

std::vector<Turn> turnsOfMarkdown(std::string_view markdown) {
    std::string storage;
    return readMarkdown(withPlainLineEnds(markdown, storage)).turns;
}
}  // namespace

bool isLifelog(const Json::Node& object) {
    static constexpr auto keys =
        std::to_array<std::string_view>({"contents", "markdown", "startTime"});
    const auto [contents, markdown, startTime] = fields(object, keys);
    return (contents && contents->isList()) || (stringIn(markdown) && startTime);
}

ParsedMeeting readLifelog(const Json::Node& object) {
    static constexpr auto keys = std::to_array<std::string_view>({"title", "contents", "markdown"});
    const auto [title, contents, markdown] = fields(object, keys);
    ParsedMeeting meeting{.date = dateOf(object), .format = Format::limitlessLifelog};
    if (const auto text = stringIn(title)) meeting.title = *text;
    if (contents && contents->isList())
        walk(*contents, meeting.turns);
    else if (const auto text = stringIn(markdown))
        meeting.turns = turnsOfMarkdown(*text);
    return meeting;
}
}  // namespace ombrix::TranscriptImport
