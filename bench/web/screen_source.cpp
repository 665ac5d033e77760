// Serves a slide of 50 scrolling shapes whose texts change all the time, for screen.mjs:
//   screen_source MILLISECONDS    between two changes of all of them
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "web/FakeShow.h"
#include "web/show/Server.h"

namespace {

constexpr int Shapes = 50;

std::string shape(int i, long value) {
  const std::string left = std::to_string(20 + i % 5 * 185);
  const std::string top = std::to_string(10 + i / 5 * 52);
  return "<div class=\"s live\" id=\"s1-sh" + std::to_string(i) +
         "\" style=\"position:absolute;left:" + left + "px;top:" + top +
         "px;width:175px;height:44px\"><svg width=\"175\" height=\"44\"><rect width=\"175\" height=\"44\" "
         "rx=\"6\" fill=\"#204080\"/></svg><div class=\"t\" "
         "style=\"position:absolute;left:-612.5px;top:-154px;"
         "width:1400px;height:352px;transform:scale(.125);padding:0 64px;box-sizing:border-box\">"
         "<p style=\"margin:0;font:224px sans-serif;color:#fff\">" +
         std::to_string(value * 37 + i) + "</p></div></div>";
}

}  // namespace

int main(int argc, char** argv) {
  boost::asio::io_context loop;
  web::test::FakeShow show;
  show.shown.next.reset();
  web::Options options;
  options.port = 0;
  web::Server server(loop, show, options);
  std::cout << server.url() << std::endl;

  const std::chrono::milliseconds pause(argc > 1 ? std::atoi(argv[1]) : 100);
  boost::asio::steady_timer timer(loop, std::chrono::steady_clock::now());
  long value = 0;
  const std::function<void()> change = [&] {
    ++value;
    std::vector<web::ShapeChange> changes;
    std::string html = "<section class=\"slide\" id=\"s1\" style=\"width:960px;height:540px\">";
    for (int i = 0; i < Shapes; ++i) {
      const std::string element = shape(i, value);
      html += element;
      changes.push_back({1, "s1-sh" + std::to_string(i), element, "Value", std::to_string(value)});
      changes.back().glides = true;
    }
    show.shown.current->html = html + "</section>";
    server.shapesChanged(changes);
    timer.expires_at(timer.expiry() + pause);
    timer.async_wait([&](auto) { change(); });
  };
  change();
  loop.run();
}
