// Whatever stands in a note, an index or a player's memory, it is taken or refused by an error, and what was
// taken names nothing outside of its folder and is read again as it was written.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "app/distribution/Note.h"
#include "app/player/KnownDecks.h"
#include "basic/Error.h"

namespace {

void require(bool isSo) {
  if (!isSo) std::abort();
}

void look(const app::Note& note) {
  const std::filesystem::path folder = "/folder";
  for (const app::SentFile& file : note.files) {
    const auto path = folder / note.folder / file.path;
    require(path.lexically_normal() == path && path.string().starts_with("/folder/"));
  }
  require(note.files.empty() == note.withdrawn);
  require(app::Note::read(note.json().dump()) == note);
}

template <typename Read>
void refusable(const Read& read) {
  try {
    read();
  } catch (const basic::Error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  refusable([&] { look(app::Note::read(text)); });
  refusable([&] {
    for (const app::Note& note : app::Index::read(text).notes) look(note);
  });
  refusable([&] {
    const app::KnownDecks known = app::KnownDecks::read(text);
    require(app::KnownDecks::read(known.text()) == known);
  });
  return 0;
}
