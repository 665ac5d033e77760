#include "render/html/ChartJson.h"

#include <cmath>

#include "render/svg/HtmlOut.h"
#include "render/text/FontMetrics.h"

// Colours, fills, lines, fonts and places as members of a chart's description.

namespace render {

namespace {

std::string css(const Color& color) {
  HtmlOut out;
  out << color;
  return out.take();
}

struct PaintWriter {
  std::string_view assetPrefix;

  json::Json operator()(const NoFill&) const { return nullptr; }
  json::Json operator()(const Color& color) const { return css(color); }
  json::Json operator()(const Gradient& gradient) const {
    json::Json stops = json::Json::array();
    for (const auto& stop : gradient.stops) stops.push_back({pixels(stop.position), css(stop.color)});
    json::Json json{{"stops", std::move(stops)}};
    if (gradient.shape == Gradient::Shape::Linear) json["angle"] = pixels(gradient.angle);
    return json;
  }
  json::Json operator()(const PatternFill& pattern) const {
    return {{"rows", pattern.rows}, {"color", css(pattern.foreground)}, {"under", css(pattern.background)}};
  }
  json::Json operator()(const PictureFill& picture) const {
    return {{"picture", std::string(assetPrefix) + picture.asset->name}};
  }
};

}  // namespace

double pixels(double value) { return std::isfinite(value) ? std::round(value * 100) / 100 : 0; }

json::Json paintJson(const Fill& fill, std::string_view assetPrefix) {
  return std::visit(PaintWriter{assetPrefix}, fill);
}

json::Json lookJson(const ChartLook& look, std::string_view assetPrefix) {
  json::Json json = json::Json::object();
  if (auto fill = paintJson(look.fill, assetPrefix); !fill.is_null()) json["fill"] = std::move(fill);
  if (auto line = lineJson(look.line); !line.is_null()) json["line"] = std::move(line);
  return json;
}

json::Json markerJson(const ChartMarker& marker, std::string_view assetPrefix) {
  if (marker.symbol.empty()) return nullptr;
  auto json = lookJson(marker.look, assetPrefix);
  json["symbol"] = marker.symbol;
  json["size"] = pixels(marker.size);
  return json;
}

json::Json lineJson(const std::optional<Line>& line) {
  if (!line || !isVisible(line->fill) || line->width <= 0) return nullptr;
  json::Json json;
  if (const auto* color = std::get_if<Color>(&line->fill)) json["color"] = css(*color);
  if (const auto* gradient = std::get_if<Gradient>(&line->fill)) {
    json["color"] = css(gradient->stops.front().color);
  }
  if (json.is_null()) return nullptr;
  json["width"] = pixels(line->width);
  if (!line->dashes.empty()) {
    json::Json dashes = json::Json::array();
    for (const double dash : line->dashes) dashes.push_back(pixels(dash * std::max(line->width, 1.0)));
    json["dashes"] = std::move(dashes);
  }
  return json;
}

json::Json fontJson(const RunStyle& style) {
  json::Json json{{"family", fontStack(style.latin).css},
                  {"size", pixels(style.size.value_or(10) * PxPerPoint)}};
  if (style.bold.value_or(false)) json["bold"] = true;
  if (style.italic.value_or(false)) json["italic"] = true;
  Color color;
  if (style.fill) {
    if (const auto* solid = std::get_if<Color>(&*style.fill)) color = *solid;
    if (const auto* gradient = std::get_if<Gradient>(&*style.fill)) color = gradient->stops.front().color;
  }
  json["color"] = css(color);
  return json;
}

json::Json placeJson(const ChartPlace& place) {
  json::Json json;
  const auto add = [&](const char* name, const std::optional<double>& share) {
    if (share) json[name] = std::round(*share * 1e5) / 1e5;
  };
  add("x", place.x);
  add("y", place.y);
  add("w", place.w);
  add("h", place.h);
  if (json.is_null()) return json;
  if (place.isOffset) json["offset"] = true;
  if (place.isInner) json["inner"] = true;
  return json;
}

}  // namespace render
