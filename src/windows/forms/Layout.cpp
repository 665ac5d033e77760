// Rows become places, from the top to the bottom.

#include "windows/forms/Layout.h"

#include <algorithm>

namespace windows::forms {

namespace {

constexpr int Margin = 7;
constexpr int RowGap = 5;
constexpr int Gap = 4;
constexpr int FrameTop = 12;
constexpr int ButtonsGap = 5;
constexpr int NarrowContent = 236;
constexpr int WideContent = 336;
/// Nothing that is typed in is narrower.
constexpr int LeastField = 56;

bool isVisible(const DialogRow& row) {
  return std::any_of(row.widgets.begin(), row.widgets.end(),
                     [](const Widget* each) { return each->isVisible(); });
}

class Arranger {
 public:
  Arranger(const Metrics& metrics, Forms::Width width) : metrics_(metrics) {
    const int content = metrics.x(width == Forms::Width::Wide ? WideContent : NarrowContent);
    left_ = metrics.x(Margin);
    right_ = left_ + content;
    top_ = metrics.y(Margin);
  }

  void labelsOf(const std::vector<DialogRow>& rows) {
    for (const DialogRow& row : rows) {
      if (row.label != nullptr && isVisible(row)) labels_ = std::max(labels_, metrics_.width(row.labelText));
    }
    if (labels_ != 0) labels_ += metrics_.x(2 * Gap);
  }

  void add(const DialogRow& row) {
    if (!isVisible(row)) return hide(row);
    if (row.row->IsButtons) return addButtons(row);
    if (!isFirst_) top_ += metrics_.y(RowGap);
    isFirst_ = false;
    std::vector<Widget*> seen;
    for (Widget* each : row.widgets) (each->isVisible() ? seen.push_back(each) : hide(*each));
    const bool isAcross = row.label == nullptr && seen.front()->isTall();
    const int left = isAcross ? left_ : left_ + labels_;
    const int top = top_;
    addFields(seen, left);
    if (row.label == nullptr) return;
    const int textTop = top + lineTop(seen);
    result_.placed.push_back({row.label, {left_, textTop, left - metrics_.x(2), textTop + metrics_.y(8)}});
  }

  void beginFrame() {
    if (!isFirst_) top_ += metrics_.y(RowGap);
    frameTop_ = top_;
    top_ += metrics_.y(FrameTop);
    left_ += metrics_.x(Margin);
    right_ -= metrics_.x(Margin);
    isFirst_ = true;
  }
  void endFrame(HWND box) {
    top_ += metrics_.y(Margin);
    left_ -= metrics_.x(Margin);
    right_ += metrics_.x(Margin);
    isFirst_ = false;
    result_.placed.push_back({box, {left_, frameTop_, right_, top_}});
  }
  void hide(HWND window) { result_.hidden.push_back(window); }

  Arrangement end() {
    result_.size = {right_ + metrics_.x(Margin), top_ + metrics_.y(Margin)};
    return std::move(result_);
  }

 private:
  void hide(const Widget& widget) {
    for (HWND each : widget.windows()) hide(each);
  }
  void hide(const DialogRow& row) {
    if (row.label != nullptr) hide(row.label);
    for (const Widget* each : row.widgets) hide(*each);
  }

  /// How far the text of a line stands below its top.
  static int lineTop(const std::vector<Widget*>& line) {
    int top = 0;
    for (const Widget* each : line) top = std::max(top, each->textTop());
    return top;
  }

  /// As many lines as they need.
  void addFields(std::vector<Widget*> rest, int left) {
    bool isFirstLine = true;
    while (!rest.empty()) {
      if (!isFirstLine) top_ += metrics_.y(Gap);
      isFirstLine = false;
      const std::size_t count = fitting(rest, right_ - left);
      addLine({rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(count)}, left);
      rest.erase(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(count));
    }
  }
  [[nodiscard]] int leastWidth(const Widget& widget) const {
    const int fixed = widget.fixedWidth();
    return fixed != 0 ? fixed : metrics_.x(LeastField);
  }
  /// A spin button stands at its field.
  [[nodiscard]] int gapBefore(const Widget& widget) const {
    return widget.control().Kind() == Forms::Kind::UpDown ? 0 : metrics_.x(Gap);
  }
  [[nodiscard]] std::size_t fitting(const std::vector<Widget*>& rest, int room) const {
    std::size_t count = 1;
    int taken = leastWidth(*rest.front());
    while (count < rest.size()) {
      taken += gapBefore(*rest[count]) + leastWidth(*rest[count]);
      if (taken > room) break;
      ++count;
    }
    return count;
  }
  void addLine(const std::vector<Widget*>& line, int left) {
    int rest = right_ - left;
    int flexible = 0;
    for (const Widget* each : line) {
      if (each != line.front()) rest -= gapBefore(*each);
      rest -= each->fixedWidth();
      if (each->fixedWidth() == 0) ++flexible;
    }
    const int text = lineTop(line);
    int x = left;
    int bottom = top_;
    const Widget* before = nullptr;
    for (const Widget* each : line) {
      if (each != line.front()) x += gapBefore(*each);
      int width = each->fixedWidth();
      if (width == 0) width = rest / flexible;
      width = std::min(width, right_ - left);
      const int top = top_ + text - each->textTop();
      // What is said of a narrow field may go on to the right.
      const bool isAlone = each == line.back() && each->fixedWidth() != 0;
      const bool isSteps = each->control().Kind() == Forms::Kind::UpDown && before != nullptr;
      each->place(isSteps ? x - before->unitWidth() : x, top, width, isAlone ? right_ - x : width,
                  result_.placed);
      before = each;
      bottom = std::max(bottom, top + each->height(width, isAlone ? right_ - x : width));
      x += width;
    }
    top_ = bottom;
  }

  void addButtons(const DialogRow& row) {
    top_ += metrics_.y(isFirst_ ? 0 : RowGap + ButtonsGap);
    int x = right_;
    int bottom = top_;
    for (std::size_t i = row.widgets.size(); i-- > 0;) {
      const Widget& widget = *row.widgets[i];
      if (!widget.isVisible()) {
        hide(widget);
        continue;
      }
      const int width = widget.fixedWidth();
      widget.place(x - width, top_, width, width, result_.placed);
      bottom = std::max(bottom, top_ + widget.height(width, width));
      x -= width + metrics_.x(Gap);
    }
    top_ = bottom;
    isFirst_ = false;
  }

  const Metrics& metrics_;
  Arrangement result_;
  int left_ = 0;
  int right_ = 0;
  int top_ = 0;
  int labels_ = 0;
  int frameTop_ = 0;
  bool isFirst_ = true;
};

}  // namespace

Arrangement arrange(const Metrics& metrics, Forms::Width width, const std::vector<DialogRow>& rows,
                    const std::vector<DialogFrame>& frames) {
  Arranger arranger(metrics, width);
  arranger.labelsOf(rows);
  for (std::size_t i = 0; i < rows.size();) {
    const Forms::Frame* const group = rows[i].row->Group;
    std::size_t end = i + 1;
    while (group != nullptr && end < rows.size() && rows[end].row->Group == group) ++end;
    const auto frame = std::find_if(frames.begin(), frames.end(),
                                    [&](const DialogFrame& each) { return each.frame == group; });
    const bool hasFrame = group != nullptr && frame != frames.end();
    const bool isSeen = hasFrame && std::any_of(rows.begin() + static_cast<std::ptrdiff_t>(i),
                                                rows.begin() + static_cast<std::ptrdiff_t>(end), isVisible);
    if (isSeen) arranger.beginFrame();
    for (; i < end; ++i) arranger.add(rows[i]);
    if (isSeen) arranger.endFrame(frame->box);
    if (hasFrame && !isSeen) arranger.hide(frame->box);
  }
  return arranger.end();
}

}  // namespace windows::forms
