// Ed25519 by OpenSSL: keys in memory and in PEM files, signatures and their check.

#include "app/distribution/Signature.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>

#include <array>

#include "app/distribution/Digest.h"
#include "app/wiring/Failure.h"
#include "basic/Base64.h"
#include "opc/Files.h"

namespace app {

namespace {

constexpr std::size_t KeySize = 32;
constexpr std::size_t SignatureSize = 64;
constexpr std::uint64_t LargestKeyFile = std::uint64_t{64} << 10U;

using Key = std::shared_ptr<EVP_PKEY>;
using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;
using Bio = std::unique_ptr<BIO, decltype(&BIO_free)>;

const unsigned char* bytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

Key held(EVP_PKEY* key, const std::string& why) {
  if (key == nullptr) fail(why);
  return {key, EVP_PKEY_free};
}

/// Never asks at the terminal.
int noPassword(char*, int, int, void*) { return -1; }

template <typename Read>
Key readKey(const std::string& file, const std::string& kind, Read read) {
  const std::string none =
      file + ": this is no " + kind + " key (PEM, without a password). 'lumenfold key new' makes one.";
  if (const auto state = opc::stateOfFile(file); state && state->size > LargestKeyFile) fail(none);
  const std::string text = opc::readFile(file, LargestKeyFile).bytes;
  const Bio bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())), BIO_free);
  Key key = held(bio ? read(bio.get()) : nullptr, none);
  if (EVP_PKEY_get_id(key.get()) != EVP_PKEY_ED25519)
    fail(file + ": this key is of another kind than Ed25519.");
  return key;
}

template <typename Write>
std::string pemText(Write write) {
  const Bio bio(BIO_new(BIO_s_mem()), BIO_free);
  if (!bio || write(bio.get()) != 1) fail("The key cannot be written as PEM.");
  char* text = nullptr;
  const long size = BIO_get_mem_data(bio.get(), &text);
  return {text, static_cast<std::size_t>(size)};
}

}  // namespace

PublicKey::PublicKey(std::string_view raw)
    : key_(held(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytesOf(raw), raw.size()),
                "A public key of Ed25519 has 32 bytes.")) {}

PublicKey PublicKey::read(const std::string& file) {
  return PublicKey(readKey(file, "public",
                           [](BIO* bio) { return PEM_read_bio_PUBKEY(bio, nullptr, noPassword, nullptr); }));
}

std::string PublicKey::id() const {
  std::array<unsigned char, KeySize> raw{};
  std::size_t size = raw.size();
  if (EVP_PKEY_get_raw_public_key(key_.get(), raw.data(), &size) != 1) fail("The public key cannot be read.");
  return sha256({reinterpret_cast<const char*>(raw.data()), size}).substr(0, 16);
}

bool PublicKey::verifies(std::string_view text, std::string_view signature) const {
  const auto bytes = basic::fromBase64(signature);
  if (!bytes || bytes->size() != SignatureSize) return false;
  const Context context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  return context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key_.get()) == 1 &&
         EVP_DigestVerify(context.get(), bytesOf(*bytes), bytes->size(), bytesOf(text), text.size()) == 1;
}

std::string PublicKey::pem() const {
  return pemText([this](BIO* bio) { return PEM_write_bio_PUBKEY(bio, key_.get()); });
}

PrivateKey::PrivateKey(std::string_view raw)
    : key_(held(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr, bytesOf(raw), raw.size()),
                "A private key of Ed25519 has 32 bytes.")) {}

PrivateKey PrivateKey::generate() {
  return PrivateKey(
      held(EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"), "No key can be made: OpenSSL refuses."));
}

PrivateKey PrivateKey::read(const std::string& file) {
  return PrivateKey(readKey(
      file, "private", [](BIO* bio) { return PEM_read_bio_PrivateKey(bio, nullptr, noPassword, nullptr); }));
}

std::string PrivateKey::sign(std::string_view text) const {
  std::array<unsigned char, SignatureSize> signature{};
  std::size_t size = signature.size();
  const Context context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  const bool isSigned =
      context && EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key_.get()) == 1 &&
      EVP_DigestSign(context.get(), signature.data(), &size, bytesOf(text), text.size()) == 1;
  if (!isSigned) fail("The note cannot be signed: OpenSSL refuses.");
  return basic::toBase64({reinterpret_cast<const char*>(signature.data()), size});
}

PublicKey PrivateKey::publicKey() const {
  std::array<unsigned char, KeySize> raw{};
  std::size_t size = raw.size();
  if (EVP_PKEY_get_raw_public_key(key_.get(), raw.data(), &size) != 1) fail("The public key cannot be told.");
  return PublicKey(std::string_view(reinterpret_cast<const char*>(raw.data()), size));
}

std::string PrivateKey::pem() const {
  return pemText([this](BIO* bio) {
    return PEM_write_bio_PrivateKey(bio, key_.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
}

}  // namespace app
