#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include "fakes/FakeServices.h"
#include "platform/MessageBox.h"
#include "platform/ProgressMeter.h"

namespace platform {
namespace {

/// A terminal and who sits at it.
class Terminal {
 public:
  Terminal() : user_(posix_openpt(O_RDWR | O_NOCTTY)) {
    grantpt(user_);
    unlockpt(user_);
    program_ = open(ptsname(user_), O_RDWR | O_NOCTTY);
  }
  ~Terminal() {
    close(program_);
    close(user_);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  [[nodiscard]] int program() const { return program_; }
  void type(const std::string& text) const {
    ASSERT_EQ(write(user_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  [[nodiscard]] std::string shown() const {
    std::string text;
    std::array<char, 1000> piece{};
    for (pollfd waiting{user_, POLLIN, 0}; poll(&waiting, 1, 50) > 0;) {
      const ssize_t count = read(user_, piece.data(), piece.size());
      if (count <= 0) break;
      text.append(piece.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  int user_;
  int program_;
};

/// What is written where nobody can answer.
class Pipe {
 public:
  Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
  ~Pipe() { close(ends_[0]); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  [[nodiscard]] int program() const { return ends_[1]; }
  [[nodiscard]] std::string shown() const {
    close(ends_[1]);
    std::array<char, 1000> text{};
    const ssize_t count = read(ends_[0], text.data(), text.size());
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
  }

 private:
  std::array<int, 2> ends_{};
};

TEST(MessageBox, WritesLinesAndTakesTheFirstButtonWithoutATerminal) {
  fakes::Loop loop;
  const Pipe pipe;
  MessageBox box(loop, 0, pipe.program());
  EXPECT_EQ(box.MsgBox("Bad\x1b[2J\r\nthing", host::vbExclamation, "Title"), host::MsgBoxResult::OK);
  EXPECT_EQ(box.MsgBox("Open?", host::vbYesNo + host::vbExclamation, "Title"), host::MsgBoxResult::Yes);
  EXPECT_EQ(box.MsgBox("Go on?", host::vbOKCancel, "Title"), host::MsgBoxResult::OK);
  EXPECT_EQ(pipe.shown(), "Title: Bad?[2J\nthing\nTitle: Open?\nTitle: Go on?\n");
}

TEST(MessageBox, AsksOnATerminal) {
  struct {
    std::int32_t style;
    const char* typed;
    host::MsgBoxResult answer;
  } const cases[] = {
      {host::vbYesNo, "no\n", host::MsgBoxResult::No},  {host::vbYesNo, " N \n", host::MsgBoxResult::No},
      {host::vbYesNo, "\n", host::MsgBoxResult::Yes},   {host::vbYesNo, "maybe\nn\n", host::MsgBoxResult::No},
      {host::vbYesNo, "\x04", host::MsgBoxResult::Yes}, {host::vbOKCancel, "", host::MsgBoxResult::OK}};
  for (const auto& c : cases) {
    fakes::Loop loop;
    const Terminal terminal;
    terminal.type(c.typed);
    MessageBox box(loop, terminal.program(), terminal.program());
    EXPECT_EQ(box.MsgBox("Open?", c.style, "Title"), c.answer) << c.typed;
  }
  // The loop goes on while it waits.
  const Terminal terminal;
  fakes::Loop loop;
  loop.onDoEvents = [&] {
    if (loop.doEvents == 3) terminal.type("n\n");
  };
  MessageBox box(loop, terminal.program(), terminal.program());
  EXPECT_EQ(box.MsgBox("Open?", host::vbYesNo, "Title"), host::MsgBoxResult::No);
}

TEST(ProgressMeter, IsOneLineOnATerminalOnly) {
  const auto use = [](int output) {
    ProgressMeter meter(output);
    meter.Show("Opening\n", 2);
    meter.Step();
    meter.Text("sales.txt");
    meter.Close();
    meter.Text("too late");
  };
  const Terminal terminal;
  use(terminal.program());
  EXPECT_EQ(terminal.shown(), "\r\x1b[KOpening 0/2\r\x1b[KOpening 1/2\r\x1b[KOpening 1/2 sales.txt\r\x1b[K");
  const Pipe pipe;
  use(pipe.program());
  EXPECT_EQ(pipe.shown(), "");

  std::string seen;
  ProgressMeter meter(pipe.program());
  meter.watch([&](const Progress* progress) {
    seen += progress == nullptr ? "closed"
                                : progress->caption + std::to_string(progress->step) + "/" +
                                      std::to_string(progress->maximum) + progress->text + " ";
  });
  meter.Show("Opening", 1);
  meter.Step();
  meter.Step();
  meter.Text("\r\nslide 1");
  meter.Close();
  EXPECT_EQ(seen, "Opening0/1 Opening1/1 Opening1/1 Opening1/1slide 1 closed");
}

}  // namespace
}  // namespace platform
