#include "render/conversion/PictureConverter.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

#include "process/OfficeCommand.h"
#include "render/conversion/FlatDrawing.h"

// One batch of pictures after the other: LibreOffice draws all of it into a document of pages, then
// pdftocairo
// gives the outlines of each page.

namespace render {

namespace {

namespace fs = std::filesystem;

/// More would be more than a browser can draw in time.
constexpr std::uintmax_t LargestResult = 32U << 20U;
constexpr std::size_t LargestBatch = 40;
constexpr std::string_view Filter =
    "pdf:draw_pdf_Export:{\"UseLosslessCompression\":{\"type\":\"boolean\",\"value\":\"true\"},"
    "\"ReduceImageResolution\":{\"type\":\"boolean\",\"value\":\"false\"}}";

std::optional<std::string> readFile(const fs::path& path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  if (error || size > LargestResult) return {};
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file) return {};
  return bytes;
}

}  // namespace

fs::path PictureConverter::cacheFile(const std::string& name) const {
  // The number is that of the way of converting.
  return options_.cache.empty() ? fs::path() : options_.cache / (name + "-1.svg");
}

const PictureConversion& PictureConverter::convert(const std::string& name, std::string_view bytes,
                                                   double width, double height) {
  const auto [at, isNew] = conversions_.try_emplace(name);
  if (!isNew) return at->second;
  if (const auto file = cacheFile(name); !file.empty()) {
    if (auto svg = readFile(file); svg && svg->ends_with("</svg>\n")) {
      at->second = {PictureConversion::State::Done, std::make_shared<const std::string>(std::move(*svg)), {}};
      return at->second;
    }
  }
  waiting_.push_back({name, std::string(bytes), width, height});
  return at->second;
}

bool PictureConverter::poll() {
  if (!child_) {
    if (!waiting_.empty() || !suspects_.empty()) startBatch();
  } else if (const auto status = child_->exitStatus()) {
    child_.reset();
    ended(*status);
  } else if (std::chrono::steady_clock::now() >= deadline_) {
    child_.reset();
    failBatch("its conversion took too long");
  }
  return std::exchange(hasEnded_, false);
}

void PictureConverter::ended(int status) {
  std::error_code error;
  if (status == process::NotInstalled) {
    failAll(
        page_ ? "pdftocairo is not installed (apt install poppler-utils)"
              : "LibreOffice, which converts such pictures, is not installed (apt install libreoffice-draw)");
  } else if (page_) {
    pageDone();
  } else if (status == 0 && fs::exists(folder_->path() / "out" / "pictures.pdf", error)) {
    page_ = 0;
    startPage();
  } else {
    failBatch("LibreOffice cannot read it");
  }
}

void PictureConverter::finish() {
  while (isBusy()) {
    poll();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

void PictureConverter::start(const std::vector<std::string>& command) {
  child_.emplace(process::boundedCommand(command), (folder_->path() / "log").string());
  deadline_ = std::chrono::steady_clock::now() + options_.timeout;
  if (child_->startError() == 0) return;
  const std::string why = std::strerror(child_->startError());
  child_.reset();
  failAll("prlimit, which bounds its conversion, cannot be started: " + why);
}

void PictureConverter::startBatch() {
  if (waiting_.empty()) {
    batch_.push_back(std::move(suspects_.front()));
    suspects_.pop_front();
  }
  while (!waiting_.empty() && batch_.size() < LargestBatch) {
    batch_.push_back(std::move(waiting_.front()));
    waiting_.pop_front();
  }
  try {
    if (!folder_) folder_.emplace();
    process::makeOfficeProfile(folder_->path() / "profile");
  } catch (const fs::filesystem_error& error) {
    failAll(std::string("there is no folder for its conversion: ") + error.what());
    return;
  }
  std::vector<DrawnPicture> drawn;
  drawn.reserve(batch_.size());
  for (const auto& picture : batch_) drawn.push_back({picture.bytes, picture.width, picture.height});
  const auto input = folder_->path() / "pictures.fodg";
  std::ofstream(input, std::ios::binary) << flatDrawing(drawn);
  start(process::officeCommand(
      {options_.office, folder_->path() / "profile", std::string(Filter), folder_->path() / "out", input}));
}

void PictureConverter::startPage() {
  const auto number = std::to_string(*page_ + 1);
  start({options_.outliner, "-svg", "-f", number, "-l", number,
         (folder_->path() / "out" / "pictures.pdf").string(), (folder_->path() / "page.svg").string()});
}

void PictureConverter::pageDone() {
  const auto& picture = batch_[*page_];
  const auto file = folder_->path() / "page.svg";
  auto svg = readFile(file);
  std::error_code ignored;
  fs::remove(file, ignored);
  if (svg)
    *svg =
        cutOut(std::move(*svg), sizeInDrawing(picture.width, picture.height), picture.width, picture.height);
  if (svg && !svg->empty()) {
    succeed(picture, std::move(*svg));
  } else {
    fail(picture, "its conversion gave nothing that can be shown");
  }
  if (++*page_ < batch_.size()) {
    startPage();
  } else {
    endBatch();
  }
}

void PictureConverter::endBatch() {
  batch_.clear();
  page_.reset();
  // A profile that a killed LibreOffice left behind may be damaged.
  folder_.reset();
}

void PictureConverter::succeed(const Picture& picture, std::string svg) {
  if (const auto file = cacheFile(picture.name); !file.empty()) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    auto unfinished = file;
    unfinished += ".new";
    const bool isWritten =
        static_cast<bool>(std::ofstream(unfinished, std::ios::binary) << svg << std::flush);
    if (isWritten) fs::rename(unfinished, file, error);
  }
  conversions_[picture.name] = {
      PictureConversion::State::Done, std::make_shared<const std::string>(std::move(svg)), {}};
  hasEnded_ = true;
}

void PictureConverter::fail(const Picture& picture, const std::string& why) {
  conversions_[picture.name] = {PictureConversion::State::Failed, nullptr, why};
  hasEnded_ = true;
}

void PictureConverter::failBatch(const std::string& why) {
  if (batch_.size() == 1) {
    fail(batch_.front(), why);
  } else {
    const std::size_t done = page_.value_or(0);
    for (std::size_t i = done; i < batch_.size(); ++i) suspects_.push_back(std::move(batch_[i]));
  }
  endBatch();
}

void PictureConverter::failAll(const std::string& why) {
  for (std::size_t i = page_.value_or(0); i < batch_.size(); ++i) fail(batch_[i], why);
  endBatch();
}

}  // namespace render
