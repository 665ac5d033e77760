#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// What covers the slide on every screen.
enum class Blank { None, Black, White };

/// What a screen looks at.
struct View {
  enum class Kind {
    /// The slide on show, wherever the show goes.
    Show,
    /// One slide, wherever the show stands.
    Slide,
    /// One shape of one slide on a transparent ground.
    Shape,
  };
  Kind kind = Kind::Show;
  /// Of Slide and Shape, from 1; 0 when the deck has none such.
  int slide = 0;
  /// Of Shape.
  std::string elementId;

  friend auto operator<=>(const View&, const View&) = default;
};

/// How a slide takes the place of the one before.
struct Transition {
  /// "none", "fade", "push", "wipe", "split", "cover", "uncover" or "cut".
  std::string kind = "none";
  /// Where the movement goes, as compass points of the screen: "l", "r", "u", "d",
  /// "lu" and so on; for "split": "horz-in", "horz-out", "vert-in", "vert-out".
  std::string direction;
  bool throughBlack = false;
  std::chrono::milliseconds duration{0};
};

/// How an element comes or goes by a click.
struct BuildMotion {
  std::string elementId;
  bool isEntrance = true;
  /// "appear", "fade", "wipe" or "fly".
  std::string kind;
  /// As Transition::direction.
  std::string direction;
  std::chrono::milliseconds duration{0};
};

/// How far the opening of a show has come.
struct Progress {
  std::string caption;
  std::string text;
  int step = 0;
  int maximum = 0;
};

/// A slide as screens draw it.
struct SlideView {
  /// Position in the show, from 1.
  int index = 0;
  /// `<section class="slide" id="s3">…</section>` at natural size. Every shape
  /// is one element whose id is unique in the document ("s3-sh12"). Text in it
  /// is escaped already: the server and the screens insert it as it is.
  std::string html;
};

/// All that a screen needs to draw the present moment; the `picture` event carries it.
struct ScreenState {
  /// Stands for the deck as it was read; when it changes, nothing that screens hold is the same any more.
  /// Opaque and short.
  std::string deck;
  /// Plain text; becomes the window's title.
  std::string title;
  /// What is shown of the slide, in CSS px of its natural size: all of it, or where
  /// the one shape lies. Sizes are above 0.
  double left = 0;
  double top = 0;
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
  /// Nothing behind the slide, for pictures that other programs put this one upon.
  bool isTransparent = false;
  /// A kiosk show: no pointer, no keys but Escape.
  bool kiosk = false;
  /// The show is over: black, with a line that says so.
  bool ended = false;
  /// How the current slide comes in.
  Transition transition;
  /// Ids of elements that carry the sign for old data, whose text is withheld, and
  /// that are not seen at all.
  std::vector<std::string> marked;
  std::vector<std::string> blanked;
  std::vector<std::string> hidden;
  /// What the last click did; the elements that it hid are in `hidden`.
  std::vector<BuildMotion> builds;
  /// While the show is being opened.
  std::optional<Progress> progress;
  std::optional<std::chrono::system_clock::time_point> began;
  /// When all screens show it, by the server's time; nothing: as soon as each can. One that has passed means
  /// the same.
  std::optional<std::chrono::system_clock::time_point> shownAt;
};

/// A cell of a table that screens hold.
struct CellChange {
  /// Among the table's td elements, from 0.
  std::size_t index = 0;
  /// The whole element, escaped like SlideView::html.
  std::string html;
};

/// One shape after a change.
struct ShapeChange {
  /// Position of its slide in the show, from 1.
  int slide = 0;
  /// Id of its element; see SlideView::html.
  std::string elementId;
  /// The whole element, escaped like SlideView::html. Empty when no screen
  /// holds the slide (it is not current, next or watched): then only programs hear
  /// of the change.
  std::string html;
  /// The shape's name and text, plain, for programs. No text: it holds none, or its
  /// data have no value for it.
  std::string name;
  std::optional<std::string> text;
  /// Whether the slide is the current or the next one.
  bool isMirrored = true;
  /// The shape scrolls through rows: screens may let the new text glide in.
  bool glides = false;
  /// Of a table of which no more than these cells have changed; `html` is empty then.
  std::vector<CellChange> cells = {};
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

/// How a source of data does.
struct ConnectionHealth {
  using Time = std::chrono::system_clock::time_point;
  /// "001"
  std::string number;
  std::string description;
  std::int64_t rows = 0;
  /// The time between two readings, in seconds.
  double interval = 0;
  /// Seconds since it last delivered; nothing: it never did.
  std::optional<double> age;
  std::optional<Time> lastSuccess;
  std::optional<Time> lastErrorTime;
  /// Without passwords.
  std::string lastError;
  /// A slide on show, or the next one, needs it, so that it is being read.
  bool isUsed = false;
  /// Reading it failed last.
  bool isFailing = false;
  /// In use, and without delivery for longer than three intervals.
  bool isStale = false;
  std::uint64_t deliveries = 0;
  std::uint64_t failures = 0;
};

/// A slide that could not be refreshed: all of it shows what it showed before.
struct StandingSlide {
  int slide = 0;
  /// Seconds since the first of its refreshes that failed.
  double age = 0;
  /// Without passwords.
  std::string error;
};

/// How a deck does of those that a player has.
struct DeckHealth {
  enum class State {
    /// On the screens.
    OnShow,
    /// It is its time, and its turn comes.
    InTurn,
    /// For another time or another computer.
    NotNow,
    /// It cannot be shown, or must not.
    Refused,
  };
  std::string name;
  State state = State::InTurn;
  /// Why it is not shown, as a sentence; empty when it is.
  std::string why;
  /// Until when it is shown, local time as in ISO 8601; empty: without a limit.
  std::string until;
};

/// What a player shows by turns.
struct DecksHealth {
  /// In the order of their names.
  std::vector<DeckHealth> decks;
  /// How often one deck has taken the place of another.
  std::uint64_t changes = 0;
  /// What is wrong with where the decks come from, as a sentence; empty for nothing.
  std::string problem;
};

struct Health {
  /// The show runs, and its first slide has been rendered.
  bool isReady = false;
  /// 0 when no slide is on show.
  int position = 0;
  std::vector<ConnectionHealth> connections;
  std::vector<StandingSlide> standing;
  /// Nothing for the show of one deck.
  std::optional<DecksHealth> decks;
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
  virtual std::string stateJson() = 0;
  /// The view that an address asks for. A slide or shape that the deck lacks gives
  /// a view of nothing; a shape without a slide is the first of that name.
  virtual View view(std::optional<int> slide, std::string_view shape) = 0;
  /// What screens with this view draw now.
  virtual ScreenState state(const View& view) = 0;
  /// From now on these slides are looked at wherever the show stands.
  virtual void watch(const std::set<int>& slides) = 0;
  virtual Health health() = 0;
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
