// The one JSON text that a command prints. Programs read it, so nothing else goes to standard
// output unless a command says so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

constexpr std::int64_t envelopeSchemaVersion = 1;

struct MetaBody {
    std::int64_t schemaVersion = envelopeSchemaVersion;
    std::string generatedAt;  ///< `yyyy-MM-ddTHH:mm:ssZ`
    std::string dbPath;       ///< empty in a failure envelope
    std::vector<std::string> warnings;
};

struct SuccessEnvelope {
    std::string command;  ///< the full literal: "ombrix-cli meetings list"
    Json::Value data;
    MetaBody meta;
};

struct FailureEnvelope {
    std::string command;  ///< the argument vector, argument 0 included, joined by blanks
    ErrorBody error;
    MetaBody meta;
};

Json::Value encode(SuccessEnvelope envelope);
Json::Value encode(const FailureEnvelope& envelope);

/// Prints a success envelope made now, with the name and the database of the context. A command
/// calls it once, at its end.
void emitSuccess(const CLIContext& context, Json::Value data,
                 std::vector<std::string> warnings = {});

/// Prints a failure envelope made now. `main` alone calls it.
void emitFailure(std::string_view command, const ErrorBody& error, std::string_view dbPath = {});

/// Prints `envelope` and then one line feed. A value that JSON cannot hold prints nothing but one
/// line on standard error, and the command goes on as if it had been printed.
void emitJSON(const Json::Value& envelope);
}  // namespace ombrix
