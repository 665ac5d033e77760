#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace web {

/// What covers the slide on every screen.
enum class Blank { None, Black, White };

/// A slide as screens draw it.
struct SlideView {
  /// Position in the show, from 1.
  int index = 0;
  /// `<section class="slide" id="s3">…</section>` at natural size. Every shape
  /// is one element whose id is unique in the document ("s3-sh12"). Text in it
  /// is escaped already: the server and the screens insert it as it is.
  std::string html;
};

/// All that a screen needs to draw the present moment.
struct Picture {
  /// Plain text; becomes the window's title.
  std::string title;
  /// The slide's natural size in CSS px, above 0.
  double width = 960;
  double height = 540;
  int slideCount = 0;
  /// Nothing before the first slide stands.
  std::optional<SlideView> current;
  /// The slide that comes next, which screens load beforehand; nothing when
  /// there is none or it is the current one.
  std::optional<SlideView> next;
  /// Name of the asset that holds the slides' styles; empty for none.
  std::string stylesheet;
  Blank blank = Blank::None;
  /// A kiosk show: no pointer, no keys but Escape.
  bool kiosk = false;
  /// The show is over: black, with a line that says so.
  bool ended = false;
};

/// One shape after a change.
struct ShapeChange {
  /// Position of its slide in the show, from 1.
  int slide = 0;
  /// Id of its element; see SlideView::html.
  std::string elementId;
  /// The whole element, escaped like SlideView::html. Empty when no screen
  /// holds the slide (it is neither current nor next): then only programs hear
  /// of the change.
  std::string html;
  /// The shape's name and text, plain, for programs.
  std::string name;
  std::string text;
};

/// A file that pages refer to.
struct Asset {
  std::shared_ptr<const std::string> bytes;
  /// As in the Content-Type header ("image/png", "text/css; charset=utf-8").
  std::string contentType;
};

/// How a command went: done, or the reason why not, as one sentence.
class Outcome {
 public:
  static Outcome done() { return {}; }
  static Outcome refused(std::string why) {
    Outcome outcome;
    outcome.why_ = std::move(why);
    return outcome;
  }
  [[nodiscard]] bool isDone() const { return !why_; }
  /// Only when not done.
  [[nodiscard]] const std::string& why() const { return *why_; }

 private:
  std::optional<std::string> why_;
};

/// The running show, as the server sees it. The program implements it.
///
/// Every function is called on the thread of the server's io_context and must
/// not block. Whatever they throw becomes an answer with status 500 (or, while a
/// stream is being filled, the end of that stream) and goes to
/// Options::onError; the server lives on. A command may call the server back
/// (Server::slideChanged and the others, even Server::stop) before it returns.
class Show {
 public:
  virtual ~Show() = default;

  /// The whole state for programs as one JSON text.
  virtual std::string state() = 0;
  virtual Picture picture() = 0;
  /// The asset of that name. A name stands for the same bytes for ever (it is
  /// best made from their hash), as browsers keep them for a year without asking.
  virtual std::optional<Asset> asset(std::string_view name) = 0;

  virtual Outcome next() = 0;
  virtual Outcome previous() = 0;
  virtual Outcome first() = 0;
  virtual Outcome last() = 0;
  /// `slide` is at least 1; the show refuses what lies behind its last slide.
  virtual Outcome goTo(int slide) = 0;
  virtual Outcome blank(Blank blank) = 0;
  virtual Outcome end() = 0;
};

}  // namespace web
