// What relationships say, under which names they are stored, and what their targets mean.

#include "opc/Relationships.h"

#include <algorithm>
#include <charconv>

#include "basic/Strings.h"

namespace opc {
namespace {

std::string_view folderOf(std::string_view partName) {
  const std::size_t slash = partName.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : partName.substr(0, slash + 1);
}

}  // namespace

bool Relationship::is(std::string_view typeName) const {
  return type.size() > typeName.size() && type.ends_with(typeName) &&
         type[type.size() - typeName.size() - 1] == '/';
}

Relationships::Relationships(Part* stored) : stored_(stored) {
  if (stored_ == nullptr) return;
  for (pugi::xml_node node : stored_->xml().document_element().children("Relationship")) {
    Relationship relationship = relationshipOf(node);
    if (relationship.id.starts_with("rId")) {
      int number = 0;
      const char* const end = relationship.id.data() + relationship.id.size();
      const auto read = std::from_chars(relationship.id.data() + 3, end, number);
      if (read.ec == std::errc() && read.ptr == end) lastNumber_ = std::max(lastNumber_, number);
    }
    byId_.emplace(relationship.id, all_.size());
    all_.push_back(std::move(relationship));
    nodes_.push_back(node);
  }
}

const Relationship* Relationships::find(std::string_view id) const {
  const auto found = byId_.find(std::string(id));
  return found == byId_.end() ? nullptr : &all_[found->second];
}

std::string Relationships::add(std::string_view type, std::string_view target) {
  std::string id = "rId" + std::to_string(++lastNumber_);
  byId_.emplace(id, all_.size());
  all_.push_back({id, std::string(type), std::string(target), false});
  pugi::xml_node node = stored_->xml().document_element().append_child("Relationship");
  node.append_attribute("Id") = id.c_str();
  node.append_attribute("Type") = all_.back().type.c_str();
  node.append_attribute("Target") = all_.back().target.c_str();
  nodes_.push_back(node);
  stored_->markChanged();
  return id;
}

void Relationships::remove(std::string_view id) {
  const auto found = byId_.find(std::string(id));
  if (found == byId_.end()) return;
  const std::size_t index = found->second;
  nodes_[index].parent().remove_child(nodes_[index]);
  stored_->markChanged();
  byId_.erase(found);
  // The last one takes the free place, so that many removals stay cheap.
  if (index + 1 < all_.size()) {
    all_[index] = std::move(all_.back());
    nodes_[index] = nodes_.back();
    byId_[all_[index].id] = index;
  }
  all_.pop_back();
  nodes_.pop_back();
}

Relationship relationshipOf(pugi::xml_node element) {
  return {element.attribute("Id").value(), element.attribute("Type").value(),
          element.attribute("Target").value(),
          basic::EqualsIgnoreCase(element.attribute("TargetMode").value(), "External")};
}

std::string relationshipsPartName(std::string_view source) {
  const std::string_view folder = folderOf(source);
  return std::string(folder) + "_rels/" + std::string(source.substr(folder.size())) + ".rels";
}

std::string resolveTarget(std::string_view source, std::string_view target) {
  target = target.substr(0, target.find_first_of("#?"));
  std::string path = target.starts_with('/') ? std::string(target.substr(1))
                                             : std::string(folderOf(source)) + std::string(target);
  if (path.find("./") == std::string::npos) return path;
  std::vector<std::string> segments;
  for (std::string& segment : basic::Split(path, '/')) {
    if (segment == "..") {
      if (segments.empty()) return {};
      segments.pop_back();
    } else if (segment != ".") {
      segments.push_back(std::move(segment));
    }
  }
  path.clear();
  for (const std::string& segment : segments) {
    if (!path.empty()) path += '/';
    path += segment;
  }
  return path;
}

std::string relativeTarget(std::string_view source, std::string_view partName) {
  std::string_view folder = folderOf(source);
  std::size_t common = 0;
  for (std::size_t i = 0; i < std::min(folder.size(), partName.size()) && folder[i] == partName[i]; ++i) {
    if (folder[i] == '/') common = i + 1;
  }
  folder.remove_prefix(common);
  std::string target;
  for (auto up = std::count(folder.begin(), folder.end(), '/'); up > 0; --up) target += "../";
  return target + std::string(partName.substr(common));
}

}  // namespace opc
