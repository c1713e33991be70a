// What the before recipe is given and returns, and the card that becomes of it: what to know ten
// minutes before a call with people the user has met. BeforeFile.h writes and reads cards.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

// ---- the input --------------------------------------------------------------------------------

/// A person or a thread that has a memory file.
struct BeforeEntityText {
    std::string key{}, display{};
    std::string engineRegionText{};  ///< `MemoryFile::Parsed::engineText`
    bool operator==(const BeforeEntityText&) const = default;
};

/// The most recent meeting with these people.
struct BeforeLastSummary {
    std::string title{};
    std::string date{};  ///< its ISO day
    std::string summary{};
    bool operator==(const BeforeLastSummary&) const = default;
};

struct BeforeInput {
    std::int64_t version = 1;
    std::string hash{};  ///< `canonical` fills it in
    std::vector<BeforeEntityText> people{};
    std::optional<BeforeEntityText> thread{};
    std::vector<ConsolidateOpenFollowUp> openFollowUps{};
    std::optional<BeforeLastSummary> lastSummary{};
    std::string userName{};
    std::string today{};  ///< an ISO day

    /// The text to send, and its hash; see CanonicalInput.h.
    CanonicalInput canonical() const;
    bool operator==(const BeforeInput&) const = default;
};

Json::Value encode(BeforeEntityText entity);
Json::Value encode(BeforeLastSummary summary);
Json::Value encode(BeforeInput input);

// ---- the card ---------------------------------------------------------------------------------

struct BeforeCard {
    /// The sections that have lines, in the order of the card.
    enum class Kind { remember, youOwe, theyOwe, question, changed, opener };

    /// What a line begins with in the file when its certainty is `read`.
    static constexpr std::string_view readsAsPrefix = "Reads as: ";

    struct Line {
        Kind kind = Kind::remember;
        std::string text{};
        std::vector<MemoryRegionParser::Source> sources{};  ///< a date may be empty
        Certainty certainty = Certainty::recorded;
        std::optional<std::string> hedge{};  ///< for views; no file has it

        /// Tells lines of a card apart, and is the same in each rendering: the kind, and the words
        /// of the text without case and punctuation, cut after some dozens of characters.
        std::string id() const;
        bool operator==(const Line&) const = default;
    };

    /// What a heading says about the lines below it.
    struct Heading {
        Kind kind = Kind::remember;
        Certainty certainty = Certainty::recorded;  ///< of its lines, unless they say another
        bool operator==(const Heading&) const = default;
    };
    /// The heading of a kind's section, without "## ".
    static std::string_view heading(Kind kind);
    /// Knows the headings of older cards too. Nothing for any other text.
    static std::optional<Heading> fromHeading(std::string_view heading);

    std::string title{};
    Instant forDate{};  ///< when the call begins
    std::vector<std::string> people{};
    std::optional<std::string> thread{};
    std::string whoAndWhen{};  ///< "Ana Ruiz and Ben Okafor · third conversation · last one Sep 1."
    std::vector<Line> lines{};
    std::optional<std::string> writer{};
    std::optional<Instant> writtenAt{};

    /// The lines of one kind, in order.
    std::vector<Line> linesOf(Kind kind) const;
    /// The people that `whoAndWhen` begins with, none of them empty.
    std::vector<std::string> names() const;
    bool operator==(const BeforeCard&) const = default;
};

constexpr auto rawValues(BeforeCard::Kind) {  // views keep these in the ids of lines
    return EnumNames::table<BeforeCard::Kind>({{BeforeCard::Kind::remember, "remember"},
                                               {BeforeCard::Kind::youOwe, "youOwe"},
                                               {BeforeCard::Kind::theyOwe, "theyOwe"},
                                               {BeforeCard::Kind::question, "question"},
                                               {BeforeCard::Kind::changed, "changed"},
                                               {BeforeCard::Kind::opener, "opener"}});
}

// ---- the output -------------------------------------------------------------------------------

struct BeforeOutput {
    std::int64_t version = 1;
    std::string whoAndWhen{};
    std::vector<SourcedLine> notSure{}, youOwe{}, theyOwe{}, unanswered{}, changedSince{};
    std::vector<SourcedLine> openers{};                  ///< three
    std::optional<std::vector<SourcedLine>> remember{};  ///< not asked for, but understood
    std::optional<std::vector<SourcedLine>> question{};  ///< the same

    /// The record in a model's answer, refused whole. Keys the record does not have are ignored.
    /// Throws `Json::SyntaxError` and `Json::DecodingError`, the latter also for a version other
    /// than 1 and 2 ("before output version 3") and when there are not three openers.
    static BeforeOutput decode(std::string_view data);
    /// The same, but throws `RefusedAnswer` for whatever is wrong.
    static BeforeOutput decodeOrRefuse(std::string_view data);

    /// Each "[title, date]" as a source; without a day at its end the whole is a title. Texts that
    /// are not in brackets and empty titles are left out.
    static std::vector<MemoryRegionParser::Source> sources(const std::vector<std::string>& strings);

    /// The card. Items without text are left out, and all but openers without a source too.
    BeforeCard card(std::string title, Instant forDate, std::vector<std::string> people,
                    std::optional<std::string> thread, std::optional<std::string> writer,
                    std::optional<Instant> at) const;
    bool operator==(const BeforeOutput&) const = default;
};

// The codec reads the record's shape alone.
Json::Value encode(BeforeOutput output);
BeforeOutput decode(Json::As<BeforeOutput>, const Json::Object& in);
}  // namespace ombrix
