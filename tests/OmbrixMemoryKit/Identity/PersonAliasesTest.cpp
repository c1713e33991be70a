#include "OmbrixMemoryKit/Identity/PersonAliases.h"

#include <algorithm>
#include <random>
#include <set>

#include "OmbrixMemoryKit/Identity/AliasRing.h"

namespace ombrix {
namespace {

using Identities = std::vector<PersonIdentity>;

TEST(PersonAliases, KeysThatMeetBecomeOneIdentity) {
    PersonAliases aliases;
    aliases.add("Ana Ruiz", "a@b");
    aliases.add("Ben", std::nullopt, "Benjamin");
    aliases.add("Ana", "A@b ");
    EXPECT_EQ(aliases.identities(),
              (Identities{{"name:ben", {}, "Benjamin"},
                          {"email:a@b", {"name:ana", "name:ana ruiz"}, "Ana"}}));
    aliases.add(" ", "");  // nobody
    EXPECT_EQ(aliases.canonical("NAME:Ana"), "email:a@b");
    EXPECT_EQ(aliases.canonical("name:Zoë"), "name:Zoë");
    EXPECT_EQ(aliases.aliases("name:ana"),
              (std::vector<std::string>{"email:a@b", "name:ana", "name:ana ruiz"}));
    EXPECT_EQ(aliases.display("Name:Ben"), "Benjamin");
    EXPECT_EQ(aliases.display("name:zoë"), std::nullopt);
}

TEST(PersonAliases, AnAddressIsCanonicalBeforeANameAndANewOneBeforeAnOldOne) {
    const struct {
        Identities before;
        PersonIdentity added, expected;
    } cases[] = {
        {{{"email:old@b", {"name:ana"}, "Ana"}},
         {"email:new@b", {"name:ana"}, ""},
         {"email:new@b", {"email:old@b", "name:ana"}, "Ana"}},
        {{{"email:old@b", {"name:ana"}, "Ana"}},
         {"name:ana", {"email:a@b"}, "Ana R."},
         {"email:old@b", {"email:a@b", "name:ana"}, "Ana R."}},
        {{{"name:x", {"name:ana", "email:z@b"}, ""}},
         {"name:ana", {"email:y@b"}, "A"},
         {"email:y@b", {"email:z@b", "name:ana", "name:x"}, "A"}},
        {{{"name:ana", {}, "Ana"}},
         {"name:ana ruiz", {"Name:ANA"}, ""},
         {"name:ana ruiz", {"name:ana"}, "Ana"}},
        {{{"name:a", {}, "A"}, {"name:b", {}, "B"}},  // a bridge; the first is merged last
         {"name:c", {"name:a", "name:b"}, ""},
         {"name:c", {"name:a", "name:b"}, "B"}},
    };
    for (const auto& [before, added, expected] : cases) {
        PersonAliases aliases(before);
        aliases.add(added);
        EXPECT_EQ(aliases.identities(), Identities{expected});
        const std::string text = Json::write(encode(aliases), Json::Style::file);
        EXPECT_EQ(Json::decode<PersonAliases>(text), aliases);
    }
}

/// Which keys are of one person does not depend on the order in which they became known.
TEST(PersonAliases, AnyOrderGivesTheSameSetsOfKeys) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        Identities links;
        for (int i = 0; i < 12; ++i)
            links.push_back(
                {"name:" + std::to_string(random() % 14),
                 {(random() % 3 == 0 ? "email:" : "name:") + std::to_string(random() % 14)},
                 ""});
        std::set<std::set<std::string>> expected;
        for (int order = 0; order < 3; ++order) {
            PersonAliases aliases;
            for (const auto& link : links) aliases.add(link);
            std::set<std::set<std::string>> found;
            for (const auto& identity : aliases.identities()) {
                const auto keys = identity.allKeys();
                found.insert({keys.begin(), keys.end()});
                for (const auto& key : keys) EXPECT_EQ(aliases.canonical(key), identity.canonical);
            }
            if (order == 0) expected = found;
            EXPECT_EQ(found, expected);
            std::ranges::shuffle(links, random);
        }
    }
}

TEST(AliasRing, IsWhatLeadsBackToItself) {
    const std::pair<Identities, std::vector<std::string>> cases[] = {
        {{{"name:a", {"name:b", "name:c"}}, {"name:d", {"name:a"}}}, {}},
        {{{"name:a", {"Name:A"}}}, {"name:a"}},
        {{{"name:a", {"name:b"}}, {"name:c", {"name:b", "name:a"}}, {"name:b", {"name:c"}}},
         {"name:a", "name:c", "name:b"}},
        {{{"name:a", {"name:b"}}, {"name:c", {"name:b"}}}, {}},  // two people, no way back
    };
    for (const auto& [identities, ring] : cases) EXPECT_EQ(aliasRing(identities), ring);
    Identities chain;
    for (int i = 0; i < 100'000; ++i)
        chain.push_back({"name:" + std::to_string(i), {"name:" + std::to_string(i + 1)}});
    EXPECT_TRUE(aliasRing(chain).empty());
    chain.push_back({"name:100000", {"name:0"}});
    EXPECT_EQ(aliasRing(chain).size(), 100'001U);
}
}  // namespace
}  // namespace ombrix
