// What no model is told: people and threads whose memory file has the correction "private", and
// addresses. A private person becomes a speaker whom nobody has named, so a recipe treats them like
// anybody unknown; what the engine knows about them is left out.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix {

class Privacy {
  public:
    /// One who is private: all their keys, and the names they are known by.
    struct Hidden {
        std::vector<std::string> keys{}, names{};
    };
    Privacy() = default;
    /// `aliases` adds the other keys and names of the same people.
    Privacy(const std::vector<Hidden>& hidden, const PersonAliases& aliases);

    /// True for a key of a person or thread that is private, case aside.
    bool hides(std::string_view entityKey) const;
    /// True for the name of such a person, case and spacing aside.
    bool hidesName(std::string_view name) const;

    /// The header and turns of a meeting without private people and addresses: they are no
    /// participants, and their turns have a label that names nobody.
    TranscriptDocument cleaned(TranscriptDocument document) const;
    /// `input` with every string in it cleaned of private names (NamePattern.h) and of addresses
    /// (Addresses.h). Keys of objects stay.
    Json::Value cleaned(Json::Value input) const;
    /// A text that is nothing but such a name counts in any case.
    std::string cleanedText(std::string_view text) const;

  private:
    std::set<std::string, std::less<>> keys_;  // in lower case
    struct Name {
        Regex expression;
        std::string label;
    };
    std::vector<Name> names_;
    std::map<std::string, std::string, std::less<>> labels_;  // by the key of each name
};
}  // namespace ombrix
