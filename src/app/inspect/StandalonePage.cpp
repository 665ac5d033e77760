#include "app/inspect/StandalonePage.h"

#include "basic/Base64.h"
#include "basic/Markup.h"
#include "web/show/ClientFiles.h"

namespace app {

namespace {

bool isNameCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-' ||
         c == '_';
}

/// The script that draws charts, which the browser unpacks itself.
std::string chartScript() {
  return "<script>new Response(new Blob([Uint8Array.from(atob(\"" +
         basic::toBase64(web::clientFile("charts.js")->bytes) +
         "\"),(c)=>c.charCodeAt(0))]).stream().pipeThrough(new DecompressionStream(\"gzip\"))).text()"
         ".then((code)=>document.head.append(Object.assign(document.createElement(\"script\"),"
         "{textContent:code})))</script>";
}

}  // namespace

std::string StandalonePage::html() const {
  constexpr std::string_view Reference = "assets/";
  std::string page = "<!doctype html>\n<html><head><meta charset=\"utf-8\"><title>" + basic::Escaped(title) +
                     "</title>\n<style>";
  page.append(styles).append("body{margin:0}</style></head><body>");
  std::string_view rest = slide;
  while (true) {
    const std::size_t found = rest.find(Reference);
    page += rest.substr(0, found);
    if (found == std::string_view::npos) break;
    rest.remove_prefix(found + Reference.size());
    std::size_t length = 0;
    while (length < rest.size() && isNameCharacter(rest[length])) ++length;
    const std::string_view name = rest.substr(0, length);
    // Words of a text may look like a reference; they name nothing and stay.
    const auto file = asset(name);
    if (file) {
      page.append("data:").append(file->contentType).append(";base64,").append(basic::toBase64(*file->bytes));
    } else {
      page.append(Reference).append(name);
    }
    rest.remove_prefix(length);
  }
  if (slide.find("<deck-chart") != std::string::npos) page += chartScript();
  page += "</body></html>\n";
  return page;
}

}  // namespace app
