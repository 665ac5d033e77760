#include "web/show/ViewName.h"

#include "web/http/Target.h"

namespace web {
namespace {

constexpr std::string_view slidePrefix = "slide-";
constexpr std::string_view shapePrefix = "shape-";
constexpr std::string_view digits = "0123456789abcdef";

std::string hexadecimal(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += {digits[value >> 4U], digits[value & 15U]};
  }
  return text;
}

std::optional<std::string> bytesOf(std::string_view text) {
  if (text.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const std::size_t high = digits.find(text[i]);
    const std::size_t low = digits.find(text[i + 1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

}  // namespace

ViewAddress viewAddressed(std::string_view query) {
  ViewAddress address;
  if (const auto slide = queryField(query, "slide")) {
    std::string_view rest = *slide;
    const auto number = takeNumber(rest);
    address.slide = number && rest.empty() ? *number : 0;
  }
  address.shape = queryField(query, "shape");
  return address;
}

View viewAt(Show& show, const ViewAddress& address) {
  if (!address.slide && !address.shape) return {};
  return show.view(address.slide, address.shape.value_or(""));
}

std::string viewName(const ViewAddress& address) {
  if (!address.slide && !address.shape) return "show";
  std::string name;
  if (address.slide) name.append(slidePrefix).append(std::to_string(*address.slide));
  if (address.slide && address.shape) name += '-';
  if (address.shape) name.append(shapePrefix).append(hexadecimal(*address.shape));
  return name;
}

std::optional<ViewAddress> viewNamed(std::string_view name) {
  constexpr std::size_t longest = 2000;
  if (name.size() > longest) return std::nullopt;
  ViewAddress address;
  std::string_view rest = name;
  if (rest.starts_with(slidePrefix)) {
    rest.remove_prefix(slidePrefix.size());
    address.slide = takeNumber(rest);
    if (!address.slide) return std::nullopt;
    if (rest.starts_with('-')) rest.remove_prefix(1);
  }
  if (rest.starts_with(shapePrefix)) {
    address.shape = bytesOf(rest.substr(shapePrefix.size()));
    if (!address.shape) return std::nullopt;
  }
  // What is written in another way than it would be here is no name: a view has one.
  return viewName(address) == name ? std::optional(address) : std::nullopt;
}

}  // namespace web
