#include "app/distribution/Signature.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/distribution/Digest.h"
#include "basic/Base64.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace app::test {
namespace {

using ::testing::HasSubstr;

std::string fromHex(std::string_view digits) {
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

// FIPS 180-4, examples of NIST.
TEST(Digest, IsSha256) {
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  Digest pieces;
  pieces.add("ab");
  pieces.add("c");
  EXPECT_EQ(pieces.finish(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

// RFC 8032, clause 7.1, tests 1 to 3.
TEST(Signature, IsEd25519) {
  struct Vector {
    const char* secret;
    const char* open;
    const char* message;
    const char* signature;
  };
  const Vector vectors[] = {
      {"9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60",
       "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
       "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46b"
       "d25bf5f0595bbe24655141438e7a100b"},
      {"4ccd089b28ff96da9db6c346ec114e0f5b8a319f35aba624da8cf6ed4fb8a6fb",
       "3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
       "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c"
       "387b2eaeb4302aeeb00d291612bb0c00"},
      {"c5aa8df43f9f837bedb7442f31dcb7b166d38535076f094b85ce3a2e0b4458f7",
       "fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
       "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc659"
       "4a7c15e9716ed28dc027beceea1ec40a"}};
  for (const Vector& vector : vectors) {
    const PrivateKey key(fromHex(vector.secret));
    const std::string message = fromHex(vector.message);
    const std::string signature = basic::toBase64(fromHex(vector.signature));
    EXPECT_EQ(key.sign(message), signature);
    EXPECT_EQ(key.publicKey().pem(), PublicKey(fromHex(vector.open)).pem());
    EXPECT_TRUE(key.publicKey().verifies(message, signature));
    EXPECT_FALSE(key.publicKey().verifies(message + " ", signature));
  }
}

TEST(Signature, OfAnotherKindIsNone) {
  const PrivateKey key = PrivateKey::generate();
  const std::string signature = key.sign("text");
  std::string bytes = *basic::fromBase64(signature);
  bytes.back() = static_cast<char>(bytes.back() ^ 1);
  for (const std::string& each :
       {std::string(), std::string("%%"), signature.substr(4), signature + signature, basic::toBase64(bytes),
        PrivateKey::generate().sign("text")}) {
    EXPECT_FALSE(key.publicKey().verifies("text", each)) << each;
  }
}

TEST(Signature, KeysAreKeptInFiles) {
  const support::TemporaryFolder folder;
  const PrivateKey key = PrivateKey::generate();
  const std::string mine = folder.write("mine", key.pem());
  const std::string open = folder.write("mine.pub", key.publicKey().pem());
  EXPECT_TRUE(PublicKey::read(open).verifies("text", PrivateKey::read(mine).sign("text")));
  EXPECT_EQ(PublicKey::read(open).id(), key.publicKey().id());
  EXPECT_EQ(key.publicKey().id().size(), 16U);

  // One in the place of the other, and no key at all.
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(PublicKey::read(mine)); }),
              HasSubstr("mine: this is no public key"));
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(PrivateKey::read(open)); }),
              HasSubstr("mine.pub: this is no private key"));
  const std::string none =
      folder.write("none", "-----BEGIN PUBLIC KEY-----\nMCow\n-----END PUBLIC KEY-----\n");
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(PublicKey::read(none)); }), HasSubstr("none"));
  // X25519: for agreeing on secrets, not for signing.
  const std::string other = folder.write("other",
                                         "-----BEGIN PUBLIC KEY-----\n"
                                         "MCowBQYDK2VuAyEAhSDwCYkwp1R0i33ctD73Wg2/Og0mOBr066SpjqqbTmo=\n"
                                         "-----END PUBLIC KEY-----\n");
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(PublicKey::read(other)); }),
              HasSubstr("another kind than Ed25519"));
}

}  // namespace
}  // namespace app::test
