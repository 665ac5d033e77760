#include "deck/objects/AuthorsCells.h"

namespace deck {

void AuthorsCells::keep(pugi::xml_node table, pugi::xml_node cell) {
  std::unique_ptr<Kept>& kept = tables_[table];
  if (!kept) kept = std::make_unique<Kept>();
  const auto [place, isNew] = kept->bodyOf.try_emplace(cell);
  if (!isNew) return;
  if (const pugi::xml_node body = cell.child("a:txBody")) place->second = kept->bodies.append_copy(body);
}

bool AuthorsCells::restore(pugi::xml_node table) {
  const auto kept = tables_.find(table);
  if (kept == tables_.end()) return false;
  for (const auto& [cell, body] : kept->second->bodyOf) {
    pugi::xml_node written = cell;
    const pugi::xml_node shown = written.child("a:txBody");
    if (body) written.insert_copy_before(body, shown);
    written.remove_child(shown);
  }
  tables_.erase(kept);
  return true;
}

void AuthorsCells::forget(const pugi::xml_document& document) {
  std::erase_if(tables_, [&](const auto& entry) { return entry.first.root() == document; });
}

}  // namespace deck
