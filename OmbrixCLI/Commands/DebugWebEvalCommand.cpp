#include "OmbrixCLI/AppRequest.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCore/AppStateBus.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/NotificationCenter.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Process.h"
#include "OmbrixPlatform/TemporaryName.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

struct WebEvalOptions {
    std::string script;
    double timeoutSeconds = 5;
    GlobalOptions global;
};

/// The two files of one request. They are removed when it is answered, given up, failed or ended by
/// a signal.
class RequestFiles {
  public:
    RequestFiles(std::string_view supportDirectory, const std::string& requestId)
        : script(pathOf(supportDirectory, requestId + ".js")),
          reply(pathOf(supportDirectory, requestId + ".json")),
          scriptName_(script),
          replyName_(reply) {}
    ~RequestFiles() {
        Files::remove(script);
        Files::remove(reply);
    }
    RequestFiles(const RequestFiles&) = delete;
    RequestFiles& operator=(const RequestFiles&) = delete;

    void writeScript(const std::string& text) const {
        Files::createDirectories(std::string(Paths::parent(script)));
        Files::writeAtomically(script, text);
        Files::remove(reply);
    }

    const std::string script;
    const std::string reply;

  private:
    static std::string pathOf(std::string_view supportDirectory, const std::string& name) {
        return Paths::joined(OmbrixAppStateBus::stateDirectory(supportDirectory),
                             "web-eval-" + name);
    }

    const TemporaryName scriptName_;
    const TemporaryName replyName_;
};

/// The page's reply; nothing when there is none in time. A file that is no JSON object counts as
/// still being written.
std::optional<Json::Value> awaitedReply(const std::string& file, double timeoutSeconds) {
    const OmbrixAppStateBus::Surroundings surroundings;
    const OmbrixAppStateBus::Deadline deadline(timeoutSeconds, surroundings);
    Json::Value reply;
    const bool came = OmbrixAppStateBus::awaitReply(file, deadline, [&](const std::string& text) {
        try {
            reply = Json::parse(text);
        } catch (const Json::SyntaxError&) {
            return false;
        }
        return reply.members() != nullptr;
    });
    if (!came) return std::nullopt;
    return reply;
}

/// Has the running application evaluate `script`. Leaves no file of the request.
std::optional<Json::Value> evaluated(const std::string& script, const std::string& supportDirectory,
                                     double timeoutSeconds) {
    const std::string requestId = Process::uniqueString();
    const RequestFiles files(supportDirectory, requestId);
    files.writeScript(Utf8::repaired(script));
    NotificationCenter::post("com.ombrix.app.debug-web-eval", requestId);
    return awaitedReply(files.reply, timeoutSeconds);
}

std::string textUnder(std::string_view key, const Json::Value& reply, const char* otherwise) {
    const Json::Value* const found = reply.member(key);
    const std::string* const text = found == nullptr ? nullptr : found->string();
    return text == nullptr ? otherwise : *text;
}

void printEvaluation(const CLIContext& context, const WebEvalOptions& options) {
    AppRequest::requirePositiveTimeout(options.timeoutSeconds, "5");
    const auto reply = evaluated(options.script, context.supportDirectory, options.timeoutSeconds);
    if (!reply) {
        throw AppRequest::unanswered(
            "web-eval", options.timeoutSeconds,
            "Run a DEBUG build (bash scripts/build_native_app.sh debug), and pass --support-dir if "
            "it stores data outside the default location.");
    }
    const Json::Value* const ok = reply->member("ok");
    if (ok == nullptr || ok->boolean() != true) {
        throw CLIError::invalidInput(
            "The page threw: " + textUnder("error", *reply, "unknown error"),
            "Check the expression in the page's Web Inspector (DEBUG builds are inspectable).");
    }
    emitSuccess(context, Json::object({{"json", textUnder("json", *reply, "null")}}));
}
}  // namespace

void declareDebugWebEval(Command root) {
    Command command = root.subcommand(
        "debug-web-eval",
        "Evaluate JavaScript in the running app's React window and print the result (DEBUG builds "
        "only).");
    const auto options = command.options<WebEvalOptions>();
    command.positional("script", options->script,
                       "A JavaScript expression; it may await. Its value comes back as JSON.");
    command.option("--timeout SECONDS", options->timeoutSeconds,
                   "Seconds to wait for the running app to answer.");
    command.run(options, printEvaluation);
}
}  // namespace ombrix
