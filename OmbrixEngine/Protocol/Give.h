// How a `give` takes an answer: it is read and checked whole before anything is written, and a
// refusal says what is wrong with which part, and which command asks anew.
#pragma once

#include <concepts>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandLine.h"
#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Notes/EngineProvenance.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

struct GiveOptions {
    std::string inputHash, model, route;
    bool fromStandardInput = false;
    std::optional<std::string> file;
    bool dryRun = false;
    GlobalOptions global;
};

/// Declares the options that every `give` has, and that exactly one of `--stdin` and `--file` is
/// given.
void declareGiveOptions(const Command& command, GiveOptions& options);

/// An answer and where it comes from.
struct GivenAnswer {
    std::string text, inputHash, model;
    EngineProvenance::Route route = EngineProvenance::Route::ombrix;
};
constexpr std::size_t largestAnswer = std::size_t{16} << 20U;

/// Reads it. Throws `CLIError` for an unknown route, a model's name that provenance lines cannot
/// hold, a file that cannot be read, and more than `largestAnswer` bytes.
GivenAnswer readAnswer(const GiveOptions& options);

/// The refusal of an answer that a decoder or a check threw `error` for.
CLIError refusedAnswer(const std::exception& error, const std::string& askCommand);

/// What `decode(text)` returns; whatever it throws becomes a refusal.
template <std::invocable<std::string_view> Decode>
auto decodeAnswer(const GivenAnswer& answer, const std::string& askCommand, Decode decode) {
    try {
        return decode(std::string_view(answer.text));
    } catch (const CLIError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw refusedAnswer(error, askCommand);
    }
}

/// The refusal of an answer to another input than the present one.
CLIError staleAnswer(std::string_view present, const std::string& askCommand);
/// Throws it unless the answer is to the present input.
void requireCurrent(const GivenAnswer& answer, std::string_view present,
                    const std::string& askCommand);

/// Makes the changes, or shows them for a dry run, and prints the envelope: `data` with "changed",
/// the paths, or with "dryRun" and "diffs". A caller that writes holds the `EngineLock`.
void emitChanges(const CLIContext& context, EngineWorkspace& workspace, const ChangeSet& changes,
                 bool dryRun, Json::Members data);
}  // namespace ombrix
