#include "ppt/PersistObjects.h"

#include "ppt/Failure.h"

namespace ppt {

PersistObjects::PersistObjects(std::string_view stream, std::size_t lastEdit)
    : stream_(stream), left_(stream.size()) {
  constexpr std::size_t LengthWithKey = 32;
  for (std::size_t at = lastEdit;;) {
    const Record edit = recordAt(stream, at);
    if (edit.type != type::UserEdit) failDamaged("its last edit is not where it should be");
    if (edit.body.size() >= LengthWithKey) {
      fail("it is encrypted. Remove its password in PowerPoint and save it again");
    }
    if (at == lastEdit) document_ = edit.numbers().little32(16);
    readDirectory(edit.numbers().little32(12));
    const std::size_t before = edit.numbers().little32(8);
    if (before == 0) return;
    // Every edit is written behind the one before it.
    if (before >= at) failDamaged("its edits lead in a circle");
    at = before;
  }
}

/// The edits are read from the last one on, so what is known already is newer.
void PersistObjects::readDirectory(std::size_t offset) {
  const Record directory = recordAt(stream_, offset);
  if (directory.type != type::PersistDirectory) failDamaged("the directory of an edit is missing");
  spend(directory);
  const basic::FileBytes numbers = directory.numbers();
  for (std::size_t at = 0; at + 4 <= directory.body.size();) {
    const std::uint32_t run = numbers.little32(at);
    at += 4;
    const std::uint32_t first = run & 0xFFFFFU;
    for (std::uint32_t i = 0; i < run >> 20U && at + 4 <= directory.body.size(); ++i, at += 4) {
      offsets_.emplace(first + i, numbers.little32(at));
    }
  }
}

Record PersistObjects::take(std::uint32_t id) {
  const auto found = offsets_.find(id);
  if (found == offsets_.end()) failDamaged("a slide or the document is missing");
  if (!taken_.insert(id).second) failDamaged("a slide is in it twice");
  const Record record = recordAt(stream_, found->second);
  spend(record);
  return record;
}

/// However directories and objects overlap, reading them stays in proportion to the file.
void PersistObjects::spend(const Record& record) {
  if (record.body.size() > left_) failDamaged("its slides overlap");
  left_ -= record.body.size();
}

}  // namespace ppt
