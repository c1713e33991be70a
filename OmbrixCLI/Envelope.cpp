#include "OmbrixCLI/Envelope.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

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

/// 0 when all of it was written, else the system's error.
int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {  // the reader's end may be non-blocking; it is ours as well
            pollfd room{.fd = descriptor, .events = POLLOUT, .revents = 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}
}  // namespace

Json::Value encode(SuccessEnvelope envelope) {
    Json::Members members;  // a list of members would copy the payload
    members.emplace("ok", true);
    members.emplace("command", std::move(envelope.command));
    members.emplace("data", std::move(envelope.data));
    members.emplace("meta", encode(envelope.meta));
    return members;
}

Json::Value encode(const FailureEnvelope& envelope) {
    return Json::object({{"ok", false},
                         {"command", envelope.command},
                         {"error", encode(envelope.error)},
                         {"meta", encode(envelope.meta)}});
}

void emitSuccess(const CLIContext& context, Json::Value data, std::vector<std::string> warnings) {
    emitSuccess(context.command, std::move(data), context.databaseURL, std::move(warnings));
}

void emitSuccess(std::string_view command, Json::Value data, std::string_view dbPath,
                 std::vector<std::string> warnings) {
    emitJSON(encode(SuccessEnvelope{.command = std::string(command),
                                    .data = std::move(data),
                                    .meta = metaNow(dbPath, std::move(warnings))}));
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

void StandardOutput::write(std::string_view text) {
    if (const int error = writeAll(STDOUT_FILENO, text); error != 0) {
        throw Error("Cannot write to standard output: " + std::generic_category().message(error) +
                    ".");
    }
}

void writeStandardError(std::string_view text) { writeAll(STDERR_FILENO, text); }
}  // namespace ombrix
