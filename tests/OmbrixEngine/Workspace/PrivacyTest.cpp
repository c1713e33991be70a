#include "OmbrixEngine/Workspace/Privacy.h"

#include <gtest/gtest.h>

#include <random>

#include "OmbrixEngine/Workspace/Addresses.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix {
namespace {

TEST(Privacy, HidesWhatAPersonIsCalledByAndNotTheRest) {
    const Privacy ana({{.keys = {"name:ana ruiz"}, .names = {"Ana Ruiz"}}}, {});
    const Privacy vega({{.keys = {"name:zofia maria de la vega"}}}, {});
    const Privacy tanaka({{.names = {"田中 花子"}}}, {}), mori({{.names = {"森 アナ"}}}, {});
    const Privacy turned({{.names = {"Ruiz, Ana"}}}, {});
    const struct {
        const Privacy& privacy;
        const char *text, *expected;
    } cases[] = {
        {ana, "Ask Ruiz, Ana or RUIZ ANA.", "Ask Speaker 901 or Speaker 901."},
        {ana, "**Ana** Ruiz, __ana__ *ruiz*", "**Speaker 901, __Speaker 901*"},
        {ana, "ana_ruiz at /in/ana-ruiz", "Speaker 901 at /in/Speaker 901"},
        {ana, "name:ana ruiz, name:ana", "Speaker 901, Speaker 901"},
        {ana, "Mr. Ruiz, frau RUIZ, M. Ruiz, A. Ruiz, Ruiz, A.",
         "Speaker 901, Speaker 901, Speaker 901, Speaker 901, Speaker 901"},
        {ana, "Pani **Ruiz**, Señora\nRuiz", "Speaker 901**, Speaker 901"},
        // Relatives, other names, two sentences, words.
        {ana, "Ruiz came. I'm Ruiz. Mr. Ruizova, Anatol, the pan ruiz; ana",
         "Ruiz came. I'm Ruiz. Mr. Ruizova, Anatol, the pan ruiz; ana"},
        {ana, "Ask Ana. Ruiz knows.", "Ask Speaker 901. Ruiz knows."},
        {vega, "Sra. de la Vega is Zofia Vega: de la Vega, Zofia Maria",
         "Speaker 901 is Speaker 901: Speaker 901"},
        {ana, "Anaさんに聞く", "Speaker 901さんに聞く"},
        {tanaka, "では田中花子が、田中さんと", "ではSpeaker 901が、Speaker 901さんと"},
        {mori, "森さんと森林でアナ・森、アナログ", "Speaker 901さんと森林でSpeaker 901、アナログ"},
        {turned, "Ana Ruiz and Ana", "Speaker 901 and Speaker 901"},
    };
    for (const auto& [privacy, text, expected] : cases)
        EXPECT_EQ(privacy.cleanedText(text), expected);
    EXPECT_TRUE(ana.hides("name:Ruiz, Ana") && ana.hidesName("Ruiz Ana"));
    EXPECT_TRUE(turned.hidesName("Ana Ruiz"));
    EXPECT_FALSE(ana.hides("name:ruiz") || ana.hidesName("Ruiz"));
}

TEST(Addresses, AreHiddenHoweverTheAtSignIsWritten) {
    const std::pair<const char*, const char*> cases[] = {
        {"Write to ana＠example.com, ben﹫x.org", "Write to (address), (address)"},
        {"<ana&#64;example.com> mailto:ana%40example.com", "<(address)> mailto:(address)"},
        {"ana @ example.com. Or ana@ example.co.uk", "(address) Or (address)"},
        {"@Ana: 2 @ 3.50 each, a @ b, ana at example.com",
         "@Ana: 2 @ 3.50 each, a @ b, ana at example.com"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(Addresses::hidden(text), expected);

    const Regex address(R"re([^\s@＠<>()\[\]{}"',;:|]+[@＠][^\s@＠<>()\[\]{}"',;:|]+)re");
    const char* const pieces[] = {"a", "é", ".co", "@", "＠", "%40", " ", ",", "<"};
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (auto count = random() % 12; count > 0; --count) text += pieces[random() % 9];
        const std::string once = Addresses::hidden(text);
        EXPECT_FALSE(address.found(once)) << text;
        EXPECT_EQ(Addresses::hidden(once), once) << text;
    }
}
}  // namespace
}  // namespace ombrix
