#include "OmbrixCLI/Envelope.h"

#include <utility>

#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {
namespace {

MetaBody metaNow(std::string_view dbPath, std::vector<std::string> warnings) {
    return {.generatedAt = isoInstant(presentTime()),
            .dbPath = std::string(dbPath),
            .warnings = std::move(warnings)};
}

Json::Value encode(const MetaBody& meta) {
    return Json::object({{"schemaVersion", meta.schemaVersion},
                         {"generatedAt", meta.generatedAt},
                         {"dbPath", meta.dbPath},
                         {"warnings", meta.warnings}});
}

Json::Value encode(const ErrorBody& error) {
    return Json::object({{"code", error.code}, {"message", error.message}, {"fix", error.fix}});
}
}  // namespace

Json::Value encode(SuccessEnvelope envelope) {
    return Json::object({{"ok", true},
                         {"command", std::move(envelope.command)},
                         {"data", std::move(envelope.data)},
                         {"meta", encode(envelope.meta)}});
}

Json::Value encode(const FailureEnvelope& envelope) {
    return Json::object({{"ok", false},
                         {"command", envelope.command},
                         {"error", encode(envelope.error)},
                         {"meta", encode(envelope.meta)}});
}

void emitSuccess(const CLIContext& context, Json::Value data, std::vector<std::string> warnings) {
    emitJSON(encode(SuccessEnvelope{.command = context.command,
                                    .data = std::move(data),
                                    .meta = metaNow(context.databaseURL, std::move(warnings))}));
}

void emitFailure(std::string_view command, const ErrorBody& error, std::string_view dbPath) {
    emitJSON(encode(FailureEnvelope{
        .command = std::string(command), .error = error, .meta = metaNow(dbPath, {})}));
}

void emitJSON(const Json::Value& envelope) {
    std::string text;
    try {
        text = Json::write(envelope, Json::Style::envelope);
    } catch (const Json::EncodingError& error) {
        writeStandardError(std::string("Failed to encode JSON output: ") + error.what() + "\n");
        return;
    }
    StandardOutput::write(text);
    StandardOutput::write("\n");
}
}  // namespace ombrix
