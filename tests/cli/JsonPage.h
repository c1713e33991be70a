// docs/json.md as something to hold an envelope to. Of the page it reads the headings and the rows:
//
//   ## `ombrix-cli moves`
//   | `moves[].kind` | "prompt", "message", "hold" | always | ... |
//
// A command with two sections prints one or the other. "fields of *Question*" stands for the fields
// of the section "## Question" above: in a row for those of its object, else for the section's own.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Json.h"

namespace ombrix::ToolTests {

class JsonPage {
  public:
    /// Throws `std::runtime_error` for a row that it does not understand.
    explicit JsonPage(const std::string& path);

    /// What in `envelope` is not as the page says: "data.moves[].kind: missing". A command that is
    /// not on the page is a problem of a program that alone, without a command, is on it.
    std::vector<std::string> problems(const Json::Value& envelope);

    /// The fields that no envelope had so far, and those that may be absent and never were.
    std::vector<std::string> unseen() const;

    /// The envelope at the end of an output, which lines may stand ahead of.
    static std::optional<Json::Value> envelopeIn(std::string_view output);

    struct Field;

  private:
    std::map<std::string, std::vector<std::shared_ptr<Field>>, std::less<>> sections_;
};
}  // namespace ombrix::ToolTests
