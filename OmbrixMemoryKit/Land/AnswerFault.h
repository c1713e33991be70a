// What is wrong with a model's answer, said so that the model can mend it: the rule that it breaks,
// the path into its JSON, and the words there.
//
//   moves[0].blocks[1].lines[0].claim_ids[0]: no claim "c9" in this move
#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

struct AnswerFault {
    enum class Rule {
        json,
        shape,
        version,
        day,
        time,
        notes,
        commentary,
        kind,
        openers,
        unique,
        citation,
    };

    Rule rule = Rule::json;
    std::string path{};  ///< "commitments[2].due"; empty for the answer as a whole
    std::string problem{};
    std::string text{};  ///< what is wrong there, a long text cut; empty for what is missing

    /// "commitments[2].what: not a string: 12", without the path for the answer as a whole, and
    /// without the text when the problem quotes it. Control characters are made visible: a U+0000
    /// would end the message of an exception.
    std::string message() const;

    /// Of an answer that is no JSON: fenced in Markdown, with words around it, UTF-16, cut off, or
    /// where it stops being JSON. Linear.
    static AnswerFault ofText(std::string_view answer);
    /// Of an answer that is JSON but not the record.
    static AnswerFault of(const Json::DecodingError& error);

    bool operator==(const AnswerFault&) const = default;
};

constexpr auto rawValues(AnswerFault::Rule) {  // agents look at these
    using enum AnswerFault::Rule;
    return EnumNames::table<AnswerFault::Rule>({
        {json, "json"},              // one JSON object in UTF-8 and nothing else
        {shape, "shape"},            // the keys and types of the schema
        {version, "version"},        // the version of the schema
        {day, "day"},                // days are YYYY-MM-DD
        {time, "time"},              // times are HH:mm
        {notes, "notes"},            // how many topics and bullets, and how long
        {commentary, "commentary"},  // no talk about how the record was made
        {kind, "kind"},              // what the kind of a move or of an entity allows
        {openers, "openers"},        // a card has three
        {unique, "unique"},          // keys and ids occur once
        {citation, "citation"},      // what is said rests on what was given
    });
}

Json::Value encode(const AnswerFault& fault);

/// Why an answer is refused whole. `what` is the fault's message.
class RefusedAnswer : public std::exception {
  public:
    explicit RefusedAnswer(AnswerFault fault)
        : fault_(std::move(fault)), message_(fault_.message()) {}

    const AnswerFault& fault() const { return fault_; }
    const char* what() const noexcept override { return message_.c_str(); }

  private:
    AnswerFault fault_;
    std::string message_;
};

/// Pieces of paths and messages.
namespace AnswerPath {
/// "moves[2]".
std::string item(std::string_view list, std::size_t index);
/// In double quotes; a long text is cut.
std::string inQuotes(std::string_view text);
}  // namespace AnswerPath

/// The fault of a day, of those that the recipes ask for.
AnswerFault notADay(std::string path, std::string_view value);
}  // namespace ombrix
