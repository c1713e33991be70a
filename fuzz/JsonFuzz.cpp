// JSON from outside: config.json, the application's state and its replies, context packs. What was
// read and is written reads back the same.
#include <algorithm>
#include <string>

#include "Law.h"
#include "OmbrixAnswerKit/Grounding/AnswerContextPack.h"
#include "OmbrixCore/AppStateBus.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/JsonDecoding.h"
#include "OmbrixPlatform/JsonFault.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// True for equal values. A double without a fraction also equals the integer: it is written as
/// one.
bool sameContent(const Json::Value& a, const Json::Value& b) {
    if (const Json::Array* list = a.array()) {
        const Json::Array* other = b.array();
        return other != nullptr && std::ranges::equal(*list, *other, sameContent);
    }
    if (const Json::Members* members = a.members()) {
        const Json::Members* other = b.members();
        return other != nullptr && std::ranges::equal(*members, *other, [](auto& x, auto& y) {
                   return x.first == y.first && sameContent(x.second, y.second);
               });
    }
    if (a.number()) return a.number() == b.number();
    return a == b;
}

/// A text that is a record, read in either way, is written and read back.
template <typename Record>
void checkRecord(std::string_view text, Json::Reading reading) {
    try {
        const Record record = Json::decode<Record>(text, reading);
        const std::string written = Json::write(encode(record), Json::Style::canonical);
        law(Json::decode<Record>(written) == record, "a record reads back");
    } catch (const Json::DecodingError&) {
        // not such a record
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto fault = Json::firstFault(Fuzz::text(data, size));
    Json::Value value;
    try {
        value = Json::parse(Fuzz::text(data, size));
    } catch (const Json::SyntaxError&) {
        return 0;
    }
    law(!fault, "what is read has no fault");
    for (const Json::Style style :
         {Json::Style::envelope, Json::Style::file, Json::Style::canonical}) {
        const std::string text = Json::write(value, style);
        const Json::Value again = Json::parse(text);
        law(sameContent(again, value), "what is written reads back");
        law(Json::write(again, style) == text, "written again, the same text");
    }
    for (const auto reading : {Json::Reading::stored, Json::Reading::answer}) {
        checkRecord<AppStateSnapshot>(Fuzz::text(data, size), reading);
        checkRecord<AnswerScope>(Fuzz::text(data, size), reading);
        checkRecord<AnswerContextPack>(Fuzz::text(data, size), reading);
    }
    return 0;
}
