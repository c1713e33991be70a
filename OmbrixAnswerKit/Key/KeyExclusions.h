// Where the key stays out, whatever was pressed: password boxes, password and clipboard managers,
// banks, browser extensions, the application itself and what is on the person's own list. Asked
// before anything of the field is read.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix::KeyExclusions {

/// What is known of the focused element before it is read.
struct Target {
    std::string bundleID;               ///< of the frontmost application
    std::optional<std::string> url{};   ///< of the page, when the application is a browser
    std::optional<std::string> role{};  ///< of accessibility
    std::optional<std::string> subrole{};
    bool operator==(const Target&) const = default;
};

enum class Reason {
    secureField,
    passwordManager,
    clipboardManager,
    finance,
    browserExtension,
    undoNotClean,
    ombrix,
    personList,
};

constexpr auto rawValues(Reason) {
    using enum Reason;
    return EnumNames::table<Reason>({{secureField, "secureField"},
                                     {passwordManager, "passwordManager"},
                                     {clipboardManager, "clipboardManager"},
                                     {finance, "finance"},
                                     {browserExtension, "browserExtension"},
                                     {undoNotClean, "undoNotClean"},
                                     {ombrix, "ombrix"},
                                     {personList, "personList"}});
}

/// The first reason to stay out, or nothing when the key may go on. A secure field comes before
/// everything else; then the application, then the page, then the person's list. Never throws.
///   personList    the person's own: bundle identifiers, which match in full, and web domains,
///   which
///                 match their subdomains too; white space around an entry and its case do not
///                 count
///   ownBundleID   the desktop application's; an empty one equals that of an unknown application,
///                 which is refused as our own
///   undoExcluded  beginnings of the bundle identifiers of applications whose undo is known not to
///                 take back a landed text cleanly; the host application may know some
std::optional<Reason> reason(const Target& target, std::span<const std::string> personList,
                             const std::optional<std::string>& ownBundleID,
                             std::span<const std::string> undoExcluded = {});

/// True when either is exactly "AXSecureTextField".
bool isSecure(const std::optional<std::string>& role, const std::optional<std::string>& subrole);

/// The host of an address, in lower case and without a leading "www.": "chase.com" of
/// "https://me@www.Chase.com:443/a". Nothing for a text that is no address or has no host. White
/// space around the address does not count; what follows the host is not looked at.
std::optional<std::string> host(std::string_view url);
}  // namespace ombrix::KeyExclusions
