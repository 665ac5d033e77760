// What was sent, as JSON and as the text that is signed.

#include "app/distribution/Note.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/distribution/Signature.h"
#include "app/wiring/Failure.h"
#include "basic/Strings.h"

namespace app {

namespace {

constexpr std::array<std::pair<Way, std::string_view>, 3> Words = {
    {{Way::Live, "live"}, {Way::Files, "files"}, {Way::Frozen, "frozen"}}};

[[noreturn]] void failOf(const std::string& what) { fail("The note " + what + "."); }

bool isRelative(std::string_view path) {
  const auto parts = basic::Split(path, '/');
  return !parts.empty() && std::all_of(parts.begin(), parts.end(), isPlainName);
}

bool isDigest(std::string_view text) {
  return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::string textIn(const json::Json& json, const char* key, bool isOptional = false) {
  const auto found = json.find(key);
  if (found == json.end() && isOptional) return {};
  if (found == json.end() || !found->is_string()) failOf(std::string("has no text '") + key + "'");
  return found->get<std::string>();
}

std::int64_t numberIn(const json::Json& json, const char* key) {
  const auto found = json.find(key);
  const auto number = found == json.end() ? std::nullopt : json::wholeOf<std::int64_t>(*found);
  if (!number) failOf(std::string("has no whole number '") + key + "'");
  if (*number < 0) failOf(std::string("has a negative '") + key + "'");
  return *number;
}

SentFile fileIn(const json::Json& json) {
  if (!json.is_object()) failOf("has a file that is none");
  SentFile file{textIn(json, "path"), static_cast<std::uint64_t>(numberIn(json, "size")),
                textIn(json, "sha256")};
  if (!isRelative(file.path)) failOf("names a file outside of its folder: '" + file.path + "'");
  if (!isDigest(file.sha256)) failOf("has no SHA-256 of '" + file.path + "'");
  return file;
}

/// Notes are somebody else's: brackets without end, and millions of values, would take memory without end.
json::Json parsed(std::string_view text, const char* what) {
  constexpr int Deepest = 8;
  constexpr int Most = 1'000'000;
  int count = 0;
  const auto bound = [&](int depth, json::Json::parse_event_t, json::Json&) {
    if (depth > Deepest || ++count > Most) fail(std::string("This is no ") + what + ": it holds too much.");
    return true;
  };
  json::Json json = json::Json::parse(text, bound, /*allow_exceptions=*/false);
  if (!json.is_object()) fail(std::string("This is no ") + what + ".");
  return json;
}

/// Of a note that need not be one.
std::string nameIn(const json::Json& json) {
  const auto found = json.is_object() ? json.find("name") : json.end();
  return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

std::string_view wordOf(Way way) {
  return std::find_if(Words.begin(), Words.end(), [&](const auto& each) { return each.first == way; })
      ->second;
}

Way wayOf(std::string_view word) {
  const auto found =
      std::find_if(Words.begin(), Words.end(), [&](const auto& each) { return each.second == word; });
  if (found == Words.end()) fail("There is no way '" + std::string(word) + "' to send a deck.");
  return found->first;
}

bool isPlainName(std::string_view name) {
  if (name.empty() || name == "." || name == "..") return false;
  return std::none_of(name.begin(), name.end(), [](char each) {
    const auto byte = static_cast<unsigned char>(each);
    return each == '/' || each == '\\' || byte < 0x20 || byte == 0x7F;
  });
}

Note Note::read(std::string_view text) { return of(parsed(text, "note of a deck")); }

Note Note::of(const json::Json& json) {
  if (!json.is_object()) failOf("is none");
  if (const auto format = numberIn(json, "format"); format != Format) {
    failOf("is of format " + std::to_string(format) + ", which this version does not know");
  }
  Note note;
  note.name = textIn(json, "name");
  if (!isPlainName(note.name)) failOf("has a name that is none: '" + note.name + "'");
  note.serial = numberIn(json, "serial");
  note.way = wayOf(textIn(json, "way"));
  note.folder = textIn(json, "folder");
  if (!note.folder.empty() && !isPlainName(note.folder))
    failOf("names a folder elsewhere: '" + note.folder + "'");
  const auto files = json.find("files");
  if (files == json.end() || !files->is_array()) failOf("has no 'files'");
  for (const auto& file : *files) note.files.push_back(fileIn(file));
  const auto withdrawn = json.find("withdrawn");
  note.withdrawn = withdrawn != json.end() && withdrawn->is_boolean() && withdrawn->get<bool>();
  if (note.files.empty() != note.withdrawn) failOf("must name files, or withdraw the deck");
  note.signature = textIn(json, "signature", /*isOptional=*/true);
  if (!note.signature.empty()) note.key = textIn(json, "key", /*isOptional=*/true);
  return note;
}

json::Json Note::json() const {
  json::Json json{{"format", Format},   {"name", name},     {"serial", serial},
                  {"way", wordOf(way)}, {"folder", folder}, {"files", json::Json::array()}};
  for (const SentFile& file : files) {
    json["files"].push_back({{"path", file.path}, {"size", file.size}, {"sha256", file.sha256}});
  }
  if (withdrawn) json["withdrawn"] = true;
  if (!signature.empty()) {
    json["key"] = key;
    json["signature"] = signature;
  }
  return json;
}

std::string Note::signedText() const {
  std::string text = "lumenfold distribution 1\nname " + name + "\nserial " + std::to_string(serial) +
                     "\nway " + std::string(wordOf(way)) + "\nfolder " + folder + "\nwithdrawn " +
                     (withdrawn ? "1" : "0") + "\n";
  for (const SentFile& file : files) {
    text += "file " + file.sha256 + " " + std::to_string(file.size) + " " + file.path + "\n";
  }
  return text;
}

void Note::sign(const PrivateKey& by) {
  key = by.publicKey().id();
  signature = by.sign(signedText());
}

bool Note::isSignedBy(const PublicKey& by) const { return by.verifies(signedText(), signature); }

Index Index::read(std::string_view text) {
  const json::Json json = parsed(text, "index of a distribution folder");
  if (const auto format = json.find("format"); format == json.end() || *format != Note::Format) {
    fail("This index of a distribution folder is of a format that this version does not know.");
  }
  const auto found = json.find("notes");
  if (found == json.end() || !found->is_array()) {
    fail("This is no index of a distribution folder: it has no notes.");
  }
  Index index;
  for (const auto& each : *found) {
    try {
      index.notes.push_back(Note::of(each));
    } catch (const basic::Error& error) {
      index.problems.push_back({nameIn(each), error.description});
    }
  }
  return index;
}

std::string Index::text(std::vector<Note> notes) {
  std::sort(notes.begin(), notes.end(), [](const Note& a, const Note& b) { return a.name < b.name; });
  json::Json json{{"format", Note::Format}, {"notes", json::Json::array()}};
  for (const Note& note : notes) json["notes"].push_back(note.json());
  return json::textOf(json, 1) + "\n";
}

}  // namespace app
