#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_pkey_st;

namespace app {

/// The half of an Ed25519 key (RFC 8032) that checks signatures.
class PublicKey {
 public:
  /// Of 32 bytes.
  explicit PublicKey(std::string_view raw);
  /// From a PEM file "PUBLIC KEY" (RFC 8410); throws basic::Error naming the file and why.
  [[nodiscard]] static PublicKey read(const std::string& file);

  /// The first 16 digits of the SHA-256 of its 32 bytes: what notes and people call it.
  [[nodiscard]] std::string id() const;
  /// Whether `signature` (base64) was made for this text with the private half. Anything else is no.
  [[nodiscard]] bool verifies(std::string_view text, std::string_view signature) const;
  /// The file that read() takes.
  [[nodiscard]] std::string pem() const;

 private:
  friend class PrivateKey;
  explicit PublicKey(std::shared_ptr<evp_pkey_st> key) : key_(std::move(key)) {}
  std::shared_ptr<evp_pkey_st> key_;
};

/// The half that signs.
class PrivateKey {
 public:
  /// Of 32 bytes.
  explicit PrivateKey(std::string_view raw);
  [[nodiscard]] static PrivateKey generate();
  /// From a PEM file "PRIVATE KEY" (RFC 8410) without a password; throws basic::Error naming the file and
  /// why.
  [[nodiscard]] static PrivateKey read(const std::string& file);

  /// Of the text, in base64.
  [[nodiscard]] std::string sign(std::string_view text) const;
  [[nodiscard]] PublicKey publicKey() const;
  [[nodiscard]] std::string pem() const;

 private:
  explicit PrivateKey(std::shared_ptr<evp_pkey_st> key) : key_(std::move(key)) {}
  std::shared_ptr<evp_pkey_st> key_;
};

}  // namespace app
