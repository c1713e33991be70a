#include "OmbrixAnswerKit/Commitments/CommitmentPhrases.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix::CommitmentPhrases {
namespace {

constexpr std::string_view weekday = "(?:monday|tuesday|wednesday|thursday|friday|saturday|sunday)";
constexpr std::string_view month =
    "(?:january|february|march|april|may|june|july|august|september|october|november|december"
    "|jan|feb|mar|apr|jun|jul|aug|sept|sep|oct|nov|dec)";

constexpr std::string_view dueByPattern =
    R"(\b(?:by|before|due|until|till)\s+(?:the\s+)?)"
    R"((?:end\s+of\s+(?:the\s+)?(?:day|week|month|quarter|sprint)|eod|eow|eom)"
    R"(|today|tomorrow|tonight|(?:this|next)\s+(?:WEEKDAY|week|month|sprint)|WEEKDAY)"
    R"(|MONTH\s+\d{1,2}(?:st|nd|rd|th)?|\d{1,2}\s+MONTH)"
    R"(|\d{4}-\d{2}-\d{2}|\d{1,2}/\d{1,2}(?:/\d{2,4})?)\b)";

constexpr std::string_view nextDayPattern =
    R"(\b(?:on|this|next)\s+(?:WEEKDAY|week|month|sprint)\b)";

constexpr std::string_view bareDayPattern =
    R"(\b(?:tomorrow|tonight|end of (?:the )?(?:day|week|month|quarter|sprint)|eod|eow|eom)"
    R"(|later today|this afternoon|this evening)"
    R"(|MONTH\s+\d{1,2}(?:st|nd|rd|th)?|\d{4}-\d{2}-\d{2})\b)";

constexpr auto dueByOpenings =
    std::to_array<std::string_view>({"by", "before", "due", "until", "till"});
constexpr auto nextDayOpenings = std::to_array<std::string_view>({"on", "this", "next"});
constexpr auto bareDayOpenings = std::to_array<std::string_view>({"tomorrow",
                                                                  "tonight",
                                                                  "end of ",
                                                                  "eod",
                                                                  "eow",
                                                                  "eom",
                                                                  "later today",
                                                                  "this afternoon",
                                                                  "this evening",
                                                                  "jan",
                                                                  "feb",
                                                                  "mar",
                                                                  "apr",
                                                                  "may",
                                                                  "jun",
                                                                  "jul",
                                                                  "aug",
                                                                  "sep",
                                                                  "oct",
                                                                  "nov",
                                                                  "dec",
                                                                  "0",
                                                                  "1",
                                                                  "2",
                                                                  "3",
                                                                  "4",
                                                                  "5",
                                                                  "6",
                                                                  "7",
                                                                  "8",
                                                                  "9"});

constexpr std::string_view firstPersonPattern =
    R"(\b(?:i'll(?!\s+(?:not|never)\b)|i will(?!\s+not\b)|i am going to|i'm going to|i'm gonna)"
    R"(|let me|on me\b|i can(?!'t|not\b|\s+(?:not|see|imagine|tell|hear|understand|believe)"
    R"(|confirm|say|think|feel|only|also see)\b))\b)";

constexpr std::string_view listenerPattern =
    R"(\b(?:get you|send you|for you|to you|give you|share with you|let you know|you'll have)"
    R"(|back to you|with you|bring you|show you|ping you|loop you|forward you|update you)"
    R"(|ship you)\b)";

constexpr std::string_view requestPattern =
    R"(\b(?:can you|could you|would you|will you|you need to|you should|you'll need to)"
    R"(|you have to|please\s+(?!don't|do not|note|be aware)[a-z]+)\b)";

constexpr auto firstPersonOpenings = std::to_array<std::string_view>(
    {"i'll", "i will", "i am going to", "i'm going to", "i'm gonna", "let me", "on me", "i can"});
constexpr auto listenerOpenings = std::to_array<std::string_view>(
    {"get you", "send you", "for you", "to you", "give you", "share with you", "let you know",
     "you'll have", "back to you", "with you", "bring you", "show you", "ping you", "loop you",
     "forward you", "update you", "ship you"});
constexpr auto requestOpenings =
    std::to_array<std::string_view>({"can you", "could you", "would you", "will you", "you need to",
                                     "you should", "you'll need to", "you have to", "please"});
}  // namespace

std::string Phrase::expression() const {
    return Text::replacingAll(Text::replacingAll(pattern, "WEEKDAY", weekday), "MONTH", month);
}

constinit const std::array<Phrase, 3> deadlines{{{dueByPattern, dueByOpenings},
                                                 {nextDayPattern, nextDayOpenings},
                                                 {bareDayPattern, bareDayOpenings}}};
constinit const Phrase firstPerson{firstPersonPattern, firstPersonOpenings};
constinit const Phrase listener{listenerPattern, listenerOpenings};
constinit const Phrase request{requestPattern, requestOpenings};
}  // namespace ombrix::CommitmentPhrases
