#include "web/show/ViewChannel.h"

#include <utility>

#include "web/http/Secret.h"
#include "web/show/Messages.h"

namespace web {

ViewChannel::ViewChannel(Picture picture, std::function<void(const std::string& name)> left)
    : build_(std::move(picture)),
      run_(newSecret()),
      streams_(
          [this](std::uint64_t sequence) -> SharedMessage {
            const auto data = this->picture();
            return data ? screenMessage("picture", sequence, *data) : nullptr;
          },
          std::move(left)) {}

void ViewChannel::publish(std::string_view event, const Data& data, Channel::Time changed,
                          const std::function<void(std::string message)>& hubs) {
  picture_ = nullptr;
  std::optional<std::string> built;
  const auto text = [&]() -> const std::string& {
    if (!built) built = data();
    return *built;
  };
  streams_.publish([&](std::uint64_t sequence) { return screenMessage(event, sequence, text()); }, changed);
  if (hubs) hubs(forHubs(event, text()));
  if (event == "picture" && built) picture_ = std::make_shared<const std::string>(std::move(*built));
}

std::shared_ptr<const std::string> ViewChannel::picture() {
  if (!picture_) picture_ = build_();
  return picture_;
}

std::optional<std::string> ViewChannel::pictureForHubs() {
  const auto data = picture();
  return data ? std::optional(forHubs("picture", *data)) : std::nullopt;
}

std::string ViewChannel::forHubs(std::string_view event, std::string_view data) const {
  // A slide is due at once on all screens; what fills a shape has the time that a state takes.
  const std::size_t largest = (event == "picture" ? 192UL : 64UL) * 1024;
  const bool isTold = data.size() <= largest;
  std::string text = R"({"run":")" + run_ + R"(","sequence":)" + std::to_string(sequence());
  text.append(R"(,"event":")").append(isTold ? event : "fetch").append("\"");
  if (isTold && !data.empty()) text.append(",\"data\":").append(data);
  return text.append("}");
}

}  // namespace web
