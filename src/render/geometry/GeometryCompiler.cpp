#include "render/geometry/GeometryCompiler.h"

#include <array>
#include <charconv>
#include <cstring>

// Names of guides become slots, formulas operations, paths commands with slots for operands.

namespace render {

namespace {

constexpr std::array<const char*, GeometryCompiler::BuiltinCount> BuiltinNames = {
    "l",     "t",   "r",   "b",    "w",    "h",    "hc",   "vc",   "ss",   "ls",   "wd2",
    "wd3",   "wd4", "wd5", "wd6",  "wd8",  "wd10", "wd12", "wd32", "hd2",  "hd3",  "hd4",
    "hd5",   "hd6", "hd8", "hd10", "hd12", "hd32", "ssd2", "ssd4", "ssd6", "ssd8", "ssd16",
    "ssd32", "cd2", "cd4", "cd8",  "3cd4", "3cd8", "5cd8", "7cd8"};

/// Takes the piece up to the separator (any run of them) off the front.
std::string_view next(std::string_view& text, char separator) {
  while (!text.empty() && text.front() == separator) text.remove_prefix(1);
  const auto end = text.find(separator);
  const auto piece = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end);
  return piece;
}

bool number(std::string_view text, double& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} && end == text.data() + text.size();
}

PathFill pathFill(std::string_view text) {
  if (text == "none") return PathFill::None;
  if (text == "lighten") return PathFill::Lighten;
  if (text == "lightenLess") return PathFill::LightenLess;
  if (text == "darken") return PathFill::Darken;
  if (text == "darkenLess") return PathFill::DarkenLess;
  return PathFill::Normal;
}

int operandCount(char op) {
  switch (op) {
    case 'M':
    case 'L':
      return 2;
    case 'A':
    case 'Q':
      return 4;
    case 'C':
      return 6;
    default:
      return 0;
  }
}

}  // namespace

GeometryCompiler::GeometryCompiler() {
  for (const char* name : BuiltinNames) define(name);
}

std::uint32_t GeometryCompiler::define(std::string_view name) {
  const auto [at, isNew] =
      slots_.try_emplace(std::string(name), static_cast<std::uint32_t>(geometry_.constants_.size()));
  if (isNew) geometry_.constants_.push_back(0);
  return at->second;
}

std::uint32_t GeometryCompiler::slot(std::string_view operand) {
  const auto known = slots_.find(std::string(operand));
  if (known != slots_.end()) return known->second;
  double value = 0;
  const bool isNumber = number(operand, value);
  const auto at = define(operand);
  if (isNumber) geometry_.constants_[at] = value;
  return at;
}

bool GeometryCompiler::guide(std::string_view name, std::string_view formula, Geometry::Guide& out) {
  using Op = Geometry::Op;
  static const std::unordered_map<std::string_view, Op> ops = {
      {"*/", Op::MulDiv},     {"+-", Op::AddSub}, {"+/", Op::AddDiv},     {"?:", Op::IfElse},
      {"abs", Op::Abs},       {"at2", Op::Atan2}, {"cat2", Op::CosAtan2}, {"cos", Op::Cos},
      {"max", Op::Max},       {"min", Op::Min},   {"mod", Op::Mod},       {"pin", Op::Pin},
      {"sat2", Op::SinAtan2}, {"sin", Op::Sin},   {"sqrt", Op::Sqrt},     {"tan", Op::Tan},
      {"val", Op::Val}};
  const auto word = next(formula, ' ');
  const auto op = ops.find(word);
  if (op != ops.end()) {
    out.op = op->second;
  } else {
    out.op = Op::Val;
    formula = word;
  }
  for (auto& from : out.from) {
    const auto operand = next(formula, ' ');
    from = operand.empty() ? slot("0") : slot(operand);
  }
  out.to = define(name);
  return !name.empty();
}

void GeometryCompiler::finish() {
  const auto& paths = geometry_.paths_;
  if (paths.size() != 1 || paths[0].width > 0 || paths[0].fill != PathFill::Normal || !paths[0].stroke)
    return;
  const auto& commands = paths[0].commands;
  static constexpr std::uint32_t corners[4][2] = {{L, T}, {R, T}, {R, B}, {L, B}};
  if (commands.size() != 5 || commands[4].op != 'Z') return;
  for (std::size_t i = 0; i < 4; ++i) {
    if (commands[i].op != (i == 0 ? 'M' : 'L') || commands[i].slots[0] != corners[i][0] ||
        commands[i].slots[1] != corners[i][1]) {
      return;
    }
  }
  geometry_.isRectangle_ = true;
}

Geometry GeometryCompiler::compile(const PresetText& preset) {
  const auto each = [&](std::string_view list, const auto& use) {
    while (!list.empty()) {
      auto entry = next(list, ';');
      const auto name = next(entry, ' ');
      Geometry::Guide made{};
      if (guide(name, entry, made)) use(name, made);
    }
  };
  each(preset.adjusts, [&](std::string_view name, const auto& made) {
    geometry_.adjusts_.push_back({std::string(name), made});
  });
  each(preset.guides, [&](std::string_view, const auto& made) { geometry_.guides_.push_back(made); });
  std::string_view rect = preset.textRect;
  for (auto& side : geometry_.textRect_) side = slot(next(rect, ' '));

  std::string_view paths = preset.paths;
  while (!paths.empty()) {
    auto text = next(paths, '|');
    Geometry::Path path;
    while (!text.empty()) {
      const auto word = next(text, ' ');
      if (word.empty()) break;
      const auto equals = word.find('=');
      if (equals != std::string_view::npos) {
        const auto key = word.substr(0, equals);
        const auto value = word.substr(equals + 1);
        if (key == "w") number(value, path.width);
        if (key == "h") number(value, path.height);
        if (key == "fill") path.fill = pathFill(value);
        if (key == "stroke") path.stroke = value != "0";
        continue;
      }
      Geometry::Command command{word[0], {}};
      for (int i = 0; i < operandCount(command.op); ++i) command.slots[i] = slot(next(text, ' '));
      path.commands.push_back(command);
    }
    geometry_.paths_.push_back(std::move(path));
  }
  finish();
  return std::move(geometry_);
}

Geometry GeometryCompiler::compile(pugi::xml_node custGeom) {
  Geometry::Guide made{};
  for (const auto gd : custGeom.child("a:avLst").children("a:gd")) {
    const std::string_view name = gd.attribute("name").value();
    if (guide(name, gd.attribute("fmla").value(), made))
      geometry_.adjusts_.push_back({std::string(name), made});
  }
  for (const auto gd : custGeom.child("a:gdLst").children("a:gd")) {
    if (guide(gd.attribute("name").value(), gd.attribute("fmla").value(), made))
      geometry_.guides_.push_back(made);
  }
  const auto rect = custGeom.child("a:rect");
  static constexpr const char* sides[] = {"l", "t", "r", "b"};
  for (int i = 0; i < 4; ++i) {
    const std::string_view side = rect.attribute(sides[i]).value();
    geometry_.textRect_[i] = slot(side.empty() ? sides[i] : side);
  }
  for (const auto source : custGeom.child("a:pathLst").children("a:path")) {
    Geometry::Path path;
    number(source.attribute("w").value(), path.width);
    number(source.attribute("h").value(), path.height);
    path.fill = pathFill(source.attribute("fill").value());
    const std::string_view stroke = source.attribute("stroke").value();
    path.stroke = stroke != "0" && stroke != "false";
    for (const auto node : source.children()) {
      Geometry::Command command{0, {}};
      const auto points = [&](std::size_t wanted) {
        std::size_t n = 0;
        for (const auto pt : node.children("a:pt")) {
          if (n == wanted) break;
          command.slots[2 * n] = slot(pt.attribute("x").value());
          command.slots[2 * n + 1] = slot(pt.attribute("y").value());
          ++n;
        }
        return n == wanted;
      };
      const char* name = node.name();
      bool whole = true;
      if (!std::strcmp(name, "a:moveTo")) {
        command.op = 'M';
        whole = points(1);
      } else if (!std::strcmp(name, "a:lnTo")) {
        command.op = 'L';
        whole = points(1);
      } else if (!std::strcmp(name, "a:quadBezTo")) {
        command.op = 'Q';
        whole = points(2);
      } else if (!std::strcmp(name, "a:cubicBezTo")) {
        command.op = 'C';
        whole = points(3);
      } else if (!std::strcmp(name, "a:arcTo")) {
        command.op = 'A';
        int n = 0;
        for (const char* key : {"wR", "hR", "stAng", "swAng"})
          command.slots[n++] = slot(node.attribute(key).value());
      } else if (!std::strcmp(name, "a:close")) {
        command.op = 'Z';
      }
      if (command.op != 0 && whole) path.commands.push_back(command);
    }
    geometry_.paths_.push_back(std::move(path));
  }
  finish();
  return std::move(geometry_);
}

}  // namespace render
