#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/distribution.h"
#include "json/Json.h"

namespace app {

class PrivateKey;
class PublicKey;

using Way = host::SendingWay;
/// "live", "files", "frozen".
[[nodiscard]] std::string_view wordOf(Way way);
/// Throws basic::Error for any other word.
[[nodiscard]] Way wayOf(std::string_view word);

/// A file of what was sent, as docs/distribution-folder.md has it.
struct SentFile {
  std::string path;
  std::uint64_t size = 0;
  std::string sha256;
  friend bool operator==(const SentFile&, const SentFile&) = default;
};

/// The note of a deck in a distribution folder (docs/distribution-folder.md).
struct Note {
  static constexpr int Format = 1;
  /// What the names of notes end with.
  static constexpr std::string_view Suffix = ".sent.json";

  std::string name;
  std::int64_t serial = 0;
  Way way = Way::Live;
  std::string folder;
  std::vector<SentFile> files;
  bool withdrawn = false;
  /// Both empty when it is not signed.
  std::string key;
  std::string signature;

  /// Of its JSON. Throws basic::Error for what is no note, has another format, or holds a name or a path that
  /// the format does not allow: what it names lies in the distribution folder for certain.
  [[nodiscard]] static Note read(std::string_view text);
  [[nodiscard]] static Note of(const json::Json& json);
  [[nodiscard]] json::Json json() const;

  void sign(const PrivateKey& by);
  /// Whether it bears that key's signature.
  [[nodiscard]] bool isSignedBy(const PublicKey& by) const;

  friend bool operator==(const Note&, const Note&) = default;

 private:
  [[nodiscard]] std::string signedText() const;
};

/// "index.json" of a distribution folder: all its notes.
struct Index {
  static constexpr std::string_view FileName = "index.json";

  /// A note that was left out.
  struct Problem {
    /// Empty where it has none.
    std::string name;
    std::string why;
  };

  std::vector<Note> notes;
  std::vector<Problem> problems;

  /// Of its JSON. One note that cannot be read does not keep the others; what is no index throws
  /// basic::Error.
  [[nodiscard]] static Index read(std::string_view text);
  /// In the order of their names.
  [[nodiscard]] static std::string text(std::vector<Note> notes);
};

/// Whether a name may stand in a note: not empty, no ".", "..", no separator, no control character.
[[nodiscard]] bool isPlainName(std::string_view name);

}  // namespace app
