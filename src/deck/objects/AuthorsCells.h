#pragma once

#include <map>
#include <memory>
#include <pugixml.hpp>

namespace deck {

/// The cells of tables whose texts were replaced, as their author left them.
class AuthorsCells {
 public:
  /// To be called before the text of an a:tc is replaced; the first call for a cell counts.
  void keep(pugi::xml_node table, pugi::xml_node cell);
  /// Puts back the cells of an a:tbl. Answers whether there were any.
  bool restore(pugi::xml_node table);
  /// The document goes away.
  void forget(const pugi::xml_document& document);

 private:
  struct Kept {
    pugi::xml_document bodies;
    std::map<pugi::xml_node, pugi::xml_node> bodyOf;  // by cell; null where it had none
  };
  std::map<pugi::xml_node, std::unique_ptr<Kept>> tables_;
};

}  // namespace deck
