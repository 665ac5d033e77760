#include "app/distribution/Digest.h"

#include <openssl/evp.h>

#include <array>

#include "app/wiring/Failure.h"

namespace app {

namespace {

void require(int answer) {
  if (answer != 1) fail("SHA-256 cannot be computed: OpenSSL offers it not.");
}

}  // namespace

Digest::Digest() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
  require(context_ ? EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr) : 0);
}

void Digest::add(std::string_view bytes) {
  require(EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()));
}

std::string Digest::finish() {
  constexpr char Digits[] = "0123456789abcdef";
  std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
  unsigned int size = 0;
  require(EVP_DigestFinal_ex(context_.get(), bytes.data(), &size));
  std::string text;
  for (unsigned int i = 0; i < size; ++i) {
    text += Digits[bytes[i] >> 4];
    text += Digits[bytes[i] & 15];
  }
  return text;
}

std::string sha256(std::string_view bytes) {
  Digest digest;
  digest.add(bytes);
  return digest.finish();
}

}  // namespace app
