#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

namespace app {

/// A Chromium that takes pictures and measures of pages, which runs
/// without a window for as long as this object lives.
class HeadlessBrowser {
 public:
  /// In CSS px, and how many px of the picture one of them becomes.
  struct View {
    int width = 960;
    int height = 540;
    double scale = 1;
  };

  /// Starts the browser. Throws basic::Error when none is installed (saying which
  /// package has it) or it does not come up.
  HeadlessBrowser();
  ~HeadlessBrowser();
  HeadlessBrowser(const HeadlessBrowser&) = delete;
  HeadlessBrowser& operator=(const HeadlessBrowser&) = delete;

  /// Opens a page and waits until its pictures and fonts are there. This and what
  /// follows throw basic::Error when the browser fails or does not answer within
  /// half a minute.
  void open(const std::filesystem::path& page, const View& view);
  /// The upper left corner of the open page, as large as the view (PNG).
  std::string photograph();
  /// The open page as it is printed (PDF), on sheets of the size that its styles ask for, without margins.
  /// It has five minutes.
  std::string print();
  /// What an expression of JavaScript gives on the open page, as JSON.
  std::string evaluate(const std::string& expression);

 private:
  class Pipe;
  std::unique_ptr<Pipe> pipe_;
  std::string session_;
};

}  // namespace app
