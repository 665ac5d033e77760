#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "process/ChildProcess.h"
#include "process/TemporaryFolder.h"
#include "render/paint/PictureConversion.h"

namespace render {

/// Makes SVG of pictures that browsers do not show (metafiles, TIFF): LibreOffice
/// draws them, as many at a time as are asked for, pdftocairo gives their outlines.
/// Both run as child processes with a bound on time and memory, and nothing waits
/// for them: poll() has to be called while isBusy(). What was converted is kept, in
/// memory and in a folder. Nothing is thrown: what fails becomes the
/// conversion's problem. One thread.
class PictureConverter : public PictureConversions {
 public:
  struct Options {
    std::string office = "soffice";
    std::string outliner = "pdftocairo";
    /// The folder where conversions outlive the program; empty for nowhere. Made when needed.
    std::filesystem::path cache = {};
    std::chrono::milliseconds timeout{60000};
  };

  explicit PictureConverter(Options options) : options_(std::move(options)) {}

  const PictureConversion& convert(const std::string& name, std::string_view bytes, double width,
                                   double height) override;

  [[nodiscard]] bool isBusy() const { return child_ || !waiting_.empty() || !suspects_.empty(); }
  /// Moves on what runs; whether a conversion has ended since the last call.
  bool poll();
  /// Waits until nothing is busy. For programs that have no one else to serve.
  void finish();

 private:
  struct Picture {
    std::string name;
    std::string bytes;
    double width = 0;
    double height = 0;
  };

  [[nodiscard]] std::filesystem::path cacheFile(const std::string& name) const;
  void start(const std::vector<std::string>& command);
  void startBatch();
  void startPage();
  void ended(int status);
  void pageDone();
  void endBatch();
  void succeed(const Picture& picture, std::string svg);
  /// The picture at hand if it is alone; otherwise each is tried alone.
  void failBatch(const std::string& why);
  void failAll(const std::string& why);
  void fail(const Picture& picture, const std::string& why);

  Options options_;
  std::map<std::string, PictureConversion> conversions_;
  std::deque<Picture> waiting_;
  /// Those of a batch that failed.
  std::deque<Picture> suspects_;
  std::vector<Picture> batch_;
  /// Of the batch, while its outlines are made.
  std::optional<std::size_t> page_;
  std::optional<process::TemporaryFolder> folder_;
  std::optional<process::ChildProcess> child_;
  std::chrono::steady_clock::time_point deadline_;
  bool hasEnded_ = false;
};

}  // namespace render
