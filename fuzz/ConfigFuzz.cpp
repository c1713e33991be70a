// config.json: whatever its content, each setting has a value or its default, and nothing is
// thrown.
#include <optional>
#include <string>

#include "Law.h"
#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// The string at a key, read by the JSON parser alone.
std::optional<std::string> plainly(std::string_view text, std::string_view key) {
    try {
        const Json::Value value = Json::parse(text);
        const Json::Value* member = value.member(key);
        const std::string* content = member == nullptr ? nullptr : member->string();
        return content == nullptr ? std::nullopt : std::optional(*content);
    } catch (const Json::SyntaxError&) {
        return std::nullopt;
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TestFolder support;
    const std::string_view text = Fuzz::text(data, size);
    support.write("config.json", text);
    const AnswerFolderResolver::Config config(support.path());

    const auto folder = plainly(text, "output_folder_display_path");
    const std::string resolved = AnswerFolderResolver::resolve(config, "/home/n");
    const bool given = folder && !Text::trimmed(*folder).empty();
    law(given || resolved == "/home/n/Documents/Ombrix", "without a folder, the default");
    law(!given || folder->front() == '~' || resolved == *folder, "a folder is not changed");

    law(!AnswerFolderResolver::memoryFolderName(config).empty(), "the Memory folder has a name");
    const auto user = plainly(text, "user_name");
    const auto name = AnswerFolderResolver::userName(config);
    law(name.has_value() == user.has_value(), "there is a name if one is given");
    law(!name || *name == Text::trimmedBlanks(*user), "a name has no blanks around it");
    return 0;
}
