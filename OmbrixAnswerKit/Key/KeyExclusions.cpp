#include "OmbrixAnswerKit/Key/KeyExclusions.h"

#include <algorithm>
#include <array>

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"
#include "embedded/OmbrixAnswerKit/key/financeHosts.txt.h"
#include "embedded/OmbrixAnswerKit/key/passwordHosts.txt.h"

namespace ombrix::KeyExclusions {
namespace {

constexpr std::string_view secureRole = "AXSecureTextField";

// Beginnings of bundle identifiers. One that ends in a point is all of a vendor's applications.
constexpr auto passwordManagers =
    wordSet({"com.1password.", "com.agilebits.", "com.bitwarden.", "com.dashlane.", "com.lastpass.",
             "com.keepersecurity.", "in.sinew.enpass", "me.proton.pass", "org.keepassxc.",
             "com.nordsec.nordpass", "com.apple.passwords", "com.apple.keychainaccess"});
constexpr auto clipboardManagers =
    wordSet({"com.raycast.macos", "com.wiheads.paste", "org.p0deje.maccy",
             "com.runningwithcrayons.alfred", "com.fiplab.copyclip", "com.tapbots.pastebot"});
constexpr auto financeApps = wordSet(
    {"com.chase.", "com.bankofamerica.", "com.wellsfargo.", "com.schwab.", "com.fidelity.",
     "com.vanguard.", "com.etrade.", "com.robinhood.", "com.interactivebrokers.", "com.webull.",
     "com.coinbase.", "com.kraken.", "com.paypal.", "com.revolut.", "com.monzo."});

constexpr auto extensionSchemes = wordSet(
    {"chrome-extension", "moz-extension", "safari-web-extension", "extension", "edge-extension"});

constexpr auto passwordHosts = wordSetOf<6>(Embedded::OmbrixAnswerKit::keyPasswordHostsTxt);
constexpr auto financeHosts = wordSetOf<41>(Embedded::OmbrixAnswerKit::keyFinanceHostsTxt);

/// Both in lower case.
template <typename Prefixes>
bool startsWithAny(std::string_view bundleID, const Prefixes& prefixes) {
    return std::ranges::any_of(
        prefixes, [&](std::string_view prefix) { return bundleID.starts_with(prefix); });
}

/// The host itself and its subdomains, not a longer name with the same end.
bool isOrIsBelow(std::string_view host, std::string_view domain) {
    if (!host.ends_with(domain)) return false;
    const auto before = host.substr(0, host.size() - domain.size());
    return before.empty() || before.ends_with('.');
}

template <typename Hosts>
bool matchesAny(std::string_view host, const Hosts& hosts) {
    return std::ranges::any_of(hosts,
                               [&](std::string_view domain) { return isOrIsBelow(host, domain); });
}

bool isOfExtension(std::string_view url) {
    const auto pieces = Text::splitDroppingEmpty(Text::trimmed(url), ":");
    return !pieces.empty() && extensionSchemes.contains(Text::lowercased(pieces.front()));
}

std::optional<Reason> reasonOfApplication(std::string_view bundleID,
                                          const std::optional<std::string>& ownBundleID,
                                          std::span<const std::string> undoExcluded) {
    if (ownBundleID && bundleID == Text::lowercased(*ownBundleID)) return Reason::ombrix;
    if (startsWithAny(bundleID, passwordManagers.words)) return Reason::passwordManager;
    if (startsWithAny(bundleID, clipboardManagers.words)) return Reason::clipboardManager;
    if (startsWithAny(bundleID, financeApps.words)) return Reason::finance;
    const bool undoIsNotClean = std::ranges::any_of(undoExcluded, [&](const std::string& prefix) {
        return bundleID.starts_with(Text::lowercased(prefix));
    });
    if (undoIsNotClean) return Reason::undoNotClean;
    return std::nullopt;
}

bool isOnList(std::span<const std::string> personList, std::string_view bundleID,
              const std::optional<std::string>& host) {
    return std::ranges::any_of(personList, [&](std::string_view listed) {
        const std::string entry = Text::lowercased(Text::trimmed(listed));
        if (entry.empty()) return false;
        return entry == bundleID || (host && isOrIsBelow(*host, entry));
    });
}

// ---- addresses --------------------------------------------------------------------------------

bool isScheme(std::string_view text) {
    return !text.empty() && Text::isAsciiLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) {
               return Text::isAsciiAlphanumeric(c) || c == '+' || c == '-' || c == '.';
           });
}

bool standsInNoHost(std::string_view host) {
    constexpr std::string_view refused = "\"<>[\\]^`{|}";
    for (std::size_t at = 0; at < host.size();) {
        const auto [scalar, length] = Utf8::decode(host, at);
        if (scalar < 0x20 || scalar == 0x7F || Text::isWhiteSpace(scalar)) return true;
        if (length == 1 && Text::contains(refused, host.substr(at, 1))) return true;
        at += length;
    }
    return false;
}

/// What stands between "//" and the path; nothing when the text is no address or has no such part.
std::optional<std::string_view> authority(std::string_view url) {
    const std::size_t slashes = url.find("//");
    if (slashes == url.npos) return std::nullopt;
    const auto before = url.substr(0, slashes);
    const bool hasScheme = before.ends_with(':') && isScheme(before.substr(0, before.size() - 1));
    if (!before.empty() && !hasScheme) return std::nullopt;
    url.remove_prefix(slashes + 2);
    return url.substr(0, url.find_first_of("/?#"));
}

/// The host without the port; nothing when what follows the colon is no port.
std::optional<std::string_view> withoutPort(std::string_view place) {
    std::size_t end = place.size();
    if (place.starts_with('[')) {  // an IPv6 address, whose colons are its own
        const std::size_t close = place.find(']');
        if (close == place.npos) return std::nullopt;
        end = close + 1;
    } else {
        end = std::min(place.find(':'), place.size());
    }
    auto port = place.substr(end);
    if (!port.empty() && !port.starts_with(':')) return std::nullopt;
    if (!port.empty()) port.remove_prefix(1);
    if (!std::ranges::all_of(port, Text::isAsciiDigit)) return std::nullopt;
    if (place.starts_with('[')) return place.substr(1, end - 2);
    return place.substr(0, end);
}
}  // namespace

std::optional<std::string> host(std::string_view url) {
    auto place = authority(Text::trimmed(url));
    if (!place) return std::nullopt;
    if (const std::size_t at = place->rfind('@'); at != place->npos) place->remove_prefix(at + 1);
    place = withoutPort(*place);
    if (!place || standsInNoHost(*place)) return std::nullopt;
    std::string host = Text::lowercased(*place);
    if (host.starts_with("www.")) host.erase(0, 4);
    if (host.empty()) return std::nullopt;
    return host;
}

bool isSecure(const std::optional<std::string>& role, const std::optional<std::string>& subrole) {
    return role == secureRole || subrole == secureRole;
}

std::optional<Reason> reason(const Target& target, std::span<const std::string> personList,
                             const std::optional<std::string>& ownBundleID,
                             std::span<const std::string> undoExcluded) {
    if (isSecure(target.role, target.subrole)) return Reason::secureField;
    const std::string bundleID = Text::lowercased(target.bundleID);
    if (const auto found = reasonOfApplication(bundleID, ownBundleID, undoExcluded)) return found;
    std::optional<std::string> page;
    if (target.url) {
        if (isOfExtension(*target.url)) return Reason::browserExtension;
        page = host(*target.url);
    }
    if (page && matchesAny(*page, passwordHosts.words)) return Reason::passwordManager;
    if (page && matchesAny(*page, financeHosts.words)) return Reason::finance;
    if (isOnList(personList, bundleID, page)) return Reason::personList;
    return std::nullopt;
}
}  // namespace ombrix::KeyExclusions
