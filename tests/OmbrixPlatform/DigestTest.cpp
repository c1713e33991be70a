#include "OmbrixPlatform/Digest.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

TEST(Digest, IsTheOnePublishedForTheseTexts) {
    EXPECT_EQ(Digest::sha256Hex(""),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Digest::sha256Hex("abc"),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Digest::sha256Hex(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    const std::uint8_t bytes[] = {0x00, 0x0A, 0xFF};
    EXPECT_EQ(Digest::hex(bytes, 3), "000aff");

    Digest::Fnv1a64 inPieces;
    EXPECT_EQ(inPieces.value(), 0xcbf29ce484222325U);
    inPieces.add("foo");
    inPieces.add("bar");
    EXPECT_EQ(inPieces.value(), 0x85944171f73967e8U);
}
}  // namespace
}  // namespace ombrix
