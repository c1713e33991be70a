#include "OmbrixAnswerKit/Key/KeyExclusions.h"

#include <gmock/gmock.h>

namespace ombrix {
namespace {

using KeyExclusions::Reason;
using KeyExclusions::reason;
using KeyExclusions::Target;

TEST(KeyExclusions, TheFirstReasonCounts) {
    const std::vector<std::string> list{"", "  Com.Example.App ", "intra.example", "chase.com"};
    const std::vector<std::string> undoExcluded{"org.Sticky."};
    const std::string browser = "org.mozilla.firefox";
    const auto page = [&](std::string url) { return Target{.bundleID = browser, .url = url}; };
    const struct {
        const char* why;
        Target target;
        std::optional<Reason> expected;
    } cases[] = {
        {"nothing", {.bundleID = "com.apple.TextEdit", .role = "AXTextArea"}, {}},
        {"secure, even our own",
         {.bundleID = "com.ombrix.app", .subrole = "AXSecureTextField"},
         Reason::secureField},
        {"secure by role", {.bundleID = "x", .role = "AXSecureTextField"}, Reason::secureField},
        {"exactly", {.bundleID = "x", .role = "axsecuretextfield"}, {}},
        {"our own, in any case", {.bundleID = "COM.Ombrix.App"}, Reason::ombrix},
        {"not what only begins so", {.bundleID = "com.ombrix.app2"}, {}},
        {"a vendor's family", {.bundleID = "com.1Password.mac"}, Reason::passwordManager},
        {"not the vendor's name alone", {.bundleID = "com.1password"}, {}},
        {"no boundary of its own", {.bundleID = "com.apple.PasswordsX"}, Reason::passwordManager},
        {"clipboard", {.bundleID = "com.raycast.macos"}, Reason::clipboardManager},
        {"bank", {.bundleID = "com.chase.mobile"}, Reason::finance},
        {"undo", {.bundleID = "org.sticky.notes"}, Reason::undoNotClean},
        {"extension", page(" Chrome-Extension://abc/x"), Reason::browserExtension},
        {"extension after colons", page("::moz-extension:x"), Reason::browserExtension},
        {"password page", page("https://vault.bitwarden.com/#/login"), Reason::passwordManager},
        {"bank page", page("https://secure.chase.com/a?b"), Reason::finance},
        {"bank page before the list", page("https://chase.com"), Reason::finance},
        {"UK domain", page("https://www.barclays.co.uk"), Reason::finance},
        {"the same letters", page("https://purchase.com/"), {}},
        {"the bank in the path", page("https://example.com/chase.com"), {}},
        {"the bank before the @", page("https://chase.com@example.com/"), {}},
        {"no address", page("chase.com"), {}},
        {"listed application", {.bundleID = "com.example.app"}, Reason::personList},
        {"listed in full only", {.bundleID = "com.example.app.beta"}, {}},
        {"listed domain", page("http://Intra.Example:8080/"), Reason::personList},
        {"its subdomain", page("http://wiki.intra.example"), Reason::personList},
        {"not its neighbour", page("http://myintra.example"), {}},
    };
    for (const auto& [why, target, expected] : cases)
        EXPECT_EQ(reason(target, list, "com.Ombrix.app", undoExcluded), expected) << why;

    EXPECT_EQ(reason({}, {}, ""), Reason::ombrix) << "an unknown application";
    EXPECT_EQ(reason({}, {}, std::nullopt), std::nullopt);
}

TEST(KeyExclusions, TheHostIsThatOfTheAddress) {
    const struct {
        const char* url;
        std::optional<std::string> host;
    } cases[] = {
        {"https://www.Chase.com/a", "chase.com"},
        {"https://www.www.com", "www.com"},
        {"https://me:pw@chase.com:443?x", "chase.com"},
        {"//chase.com/x", "chase.com"},
        {"ftp://[2001:DB8::1]:21/", "2001:db8::1"},
        {"https://www.", {}},
        {" https://chase.com/a b\n", "chase.com"},
        {"https://chase.com:x/", {}},
        {"https://ch ase.com/", {}},
        {"https:chase.com", {}},
        {"about:blank", {}},
        {"file:///etc/hosts", {}},
        {"1http://x.com", {}},
        {"see https://x.com", {}},
        {"https://[::1", {}},
        {"https://www.[:2", {}},
        {"https://:80", {}},
        {"", {}},
        {"//", {}},
    };
    for (const auto& [url, host] : cases) EXPECT_EQ(KeyExclusions::host(url), host) << url;
}
}  // namespace
}  // namespace ombrix
