#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/clsSlide.h"
#include "runtime/OfflinePages.h"

namespace LF2000 {

/// Lets a slide that is edited scroll through the pages of its rows as a show would, over and over, so that
/// its author sees it; but none stands longer than LongestPage or shorter than ShortestPage. What the shapes
/// show is written as live values are: the presentation stays as saved as it was. A slide is played by one at
/// a time: who starts takes the place of who plays it.
class ScrollPlay : public std::enable_shared_from_this<ScrollPlay> {
 public:
  static constexpr double LongestPage = 2000;  // milliseconds
  static constexpr double ShortestPage = 100;

  ScrollPlay(std::shared_ptr<clsPresentation> presentation, std::shared_ptr<PowerPoint::Slide> slide);
  ~ScrollPlay() { Stop(); }
  ScrollPlay(const ScrollPlay&) = delete;
  ScrollPlay& operator=(const ScrollPlay&) = delete;

  /// Takes up how the slide scrolls, and what the data hold now. One that plays shows its page anew, and
  /// stops where nothing scrolls any more.
  void TakeUp(const clsSlide& properties);
  /// Some shape of the slide has an entry.
  [[nodiscard]] bool Scrolls() const { return !scrolls_.empty(); }
  [[nodiscard]] std::size_t PageCount() const { return pages_.size(); }

  /// Called when it has ended otherwise than by Stop; may be empty.
  std::function<void()> Ended;

  /// Begins with the second page: the first one is there.
  void Start();
  /// The shapes show their first rows again.
  void Stop();
  [[nodiscard]] bool IsPlaying() const { return timer_ != nullptr; }

 private:
  [[nodiscard]] bool PlaysWith(const ScrollPlay& other) const;
  void ShowPage(std::size_t page);
  void NextPage();
  void EndTimer();

  const std::shared_ptr<clsPresentation> presentation_;
  const std::shared_ptr<PowerPoint::Slide> slide_;
  std::vector<clsRTScrollInfo> scrolls_;
  /// The shapes that scroll, with the places of their entries.
  std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, std::size_t>> shapes_;
  std::vector<OfflinePage> pages_;
  std::size_t page_ = 0;
  /// Null while nothing is played.
  std::unique_ptr<host::Timer> timer_;
  /// Those that play.
  static inline std::vector<ScrollPlay*> playing_;
};

}  // namespace LF2000
