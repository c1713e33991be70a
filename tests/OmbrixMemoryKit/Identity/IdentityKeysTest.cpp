// The four identities: meeting, content, person, commitment. Hashes of fixed inputs are those that
// `printf ... | sha256sum` prints: files on disk hold them.
#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Identity/MeetingKey.h"

namespace ombrix {
namespace {

TEST(MeetingKey, IsTheSpendIDOrAHashOfStartAndTitle) {
    EXPECT_EQ(MeetingKey::make(" rec/7 e\u0301:a.b-c_2-\u0301\r\nx\n", "s", "d", "t"),
              "rec_7_e\u0301_a.b-c_2__x");
    EXPECT_EQ(MeetingKey::make(" \n", "2026-09-01T10:00:00Z", "2026-09-01", "Pricing"),
              "m-745d413a5d768168");
    EXPECT_EQ(MeetingKey::make("", "", "2026-09-01", "Pricing"), "m-5e6d7d580b781c56");
}

TEST(ContentFingerprint, ChangesWithEveryWordAndEveryBorder) {
    using Turns = std::vector<TranscriptDocument::Turn>;
    const auto made = [](const Turns& turns) {
        return ContentFingerprint::make("T", "2026-09-01", {"Ana", "Bo"}, turns);
    };
    EXPECT_EQ(made({{"Ana", "Hello there."}, {"Me", "Hi."}}), "cb2bd7a062197b31");
    EXPECT_NE(made({{"Ana", "Hello"}, {" there.", ""}, {"Me", "Hi."}}), "cb2bd7a062197b31");
}

TEST(CommitmentID, IsTheSameForTheSameWordsOfTheSamePerson) {
    const std::string id = CommitmentID::make("m-1", "Send the Q3 deck!", "name:Ana");
    EXPECT_EQ(id, "c-dc0dee4a");
    EXPECT_EQ(CommitmentID::make("m-1", "send  the q3 deck", "NAME:ana"), id);
    EXPECT_NE(CommitmentID::make("M-1", "send the q3 deck", "name:ana"), id);
    for (const auto* valid : {"c-0a1b2c3d", "c-0A1B2C3D"})
        EXPECT_TRUE(CommitmentID::isValid(valid)) << valid;
    for (const auto* other : {"c-0a1b2c3", "c-0a1b2c3dd", "C-0a1b2c3d", "c-0a1b2c3g", "", "c-"})
        EXPECT_FALSE(CommitmentID::isValid(other)) << other;
}

TEST(EntityKeys, AnAddressComesBeforeAName) {
    using EntityKeys::normalizeKey;
    EXPECT_EQ(normalizeKey("  Ana \r\n\tRUIZ "), "name:ana ruiz");
    EXPECT_EQ(normalizeKey("Ana", " Ana@B.example "), "email:ana@b.example");
    EXPECT_EQ(normalizeKey("Ana", "  "), "name:ana");
    EXPECT_EQ(normalizeKey(" \n", ""), std::nullopt);
}

TEST(EntityKeys, AModelIsShownNoAddress) {
    using EntityKeys::forModel, EntityKeys::Shown;
    EXPECT_EQ(forModel("email:a@b", "a@b"), (Shown{"name:unnamed", ""}));
    EXPECT_EQ(forModel("EMAIL:a@b", "Ana  Ruiz"), (Shown{"name:ana ruiz", "Ana  Ruiz"}));
    EXPECT_EQ(forModel("name:a@b", "Ana"), (Shown{"name:ana", "Ana"}));
    EXPECT_EQ(forModel("Name:Ana", " a@b "), (Shown{"Name:Ana", ""}));
    EXPECT_EQ(forModel("thread:a@b", "Launch"), (Shown{"thread:a@b", "Launch"}));
}

TEST(EntityKeys, TellsLabelsAndAddressesFromNames) {
    for (const auto* label : {"Them", " speaker ", "UNKNOWN", "someone", "Speaker 12", "speaker 0",
                              "speaker -3", "Someone in this call"}) {
        EXPECT_TRUE(EntityKeys::isGenericLabel(label)) << label;
        EXPECT_TRUE(EntityKeys::isGenericKey(std::string("name:") + label)) << label;
        EXPECT_FALSE(EntityKeys::isGenericKey(std::string("thread:") + label)) << label;
    }
    for (const auto* name : {"Speaker Twelve", "Speakers", "speaker  2", "speaker 1.5", "Themis",
                             "speaker 99999999999999999999", "Ana", ""})
        EXPECT_FALSE(EntityKeys::isGenericLabel(name)) << name;
    EXPECT_TRUE(EntityKeys::isGenericKey(""));
    EXPECT_FALSE(EntityKeys::isGenericKey("name:"));
    for (const auto* address : {"a@b", " ana@example.com\n"})
        EXPECT_TRUE(EntityKeys::isAddress(address)) << address;
    for (const auto* other : {"", "@", "a@", "@b", "ab", "a@b@c", "a b@c", "a@b\u00A0c", "a@@"})
        EXPECT_FALSE(EntityKeys::isAddress(other)) << other;
}
}  // namespace
}  // namespace ombrix
