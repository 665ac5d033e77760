// A host whose calls fail, one after the other, in each of the usual ways.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>

#include "fakes/Entry.h"
#include "fakes/FakeServices.h"
#include "windows/strict/Object.h"

namespace conformance {
namespace {

constexpr std::array<HRESULT, 5> Failures = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER,
                                             RPC_E_DISCONNECTED, E_OUTOFMEMORY, DISP_E_EXCEPTION};

/// The add-in is loaded, a deck opened, shown while its data change, saved and closed; one call fails.
struct Session {
  explicit Session(const strict::Fault& fault) {
    strict::world().calls = 0;
    strict::world().fault = fault;
    run();
    strict::world().fault = {};
    calls = strict::world().calls;
    hasTimers = machine.loop.HasTimers();
  }

  void run() {
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\n");
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    fakes::Slide& slide = deck->Add();
    slide.AddField("price", 1);
    slide.AddClock("hh:nn:ss");
    slide.AddChart("chart");
    deck->Add().AddTable("table", "Item|Price/a|b");
    std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;
    fakes::load(addIn, host);
    const auto raise = [this](auto event) {
      if (host->sink != nullptr) event(*host->sink);
    };
    raise([this](auto& sink) { sink.PresentationOpen(deck); });
    const auto window = std::make_shared<fakes::Window>(deck);
    raise([&](auto& sink) { sink.SlideShowBegin(window); });
    const bool runs = machine.loop.HasTimers();
    const std::size_t before = machine.messageBox.shown.size();
    machine.loop.Advance(1500);
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t4\n");
    machine.loop.Advance(1500);
    window->position = 2;
    raise([&](auto& sink) { sink.SlideShowNextSlide(window); });
    machine.loop.Advance(1500);
    if (runs) boxesInShow = machine.messageBox.shown.size() - before;
    raise([this](auto& sink) { sink.SlideShowEnd(deck); });
    raise([this](auto& sink) { sink.PresentationSave(deck); });
    raise([this](auto& sink) { sink.PresentationClose(deck); });
    addIn->OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
  }

  fakes::Machine machine;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  long calls = 0;
  std::size_t boxesInShow = 0;
  bool hasTimers = false;
};

void withFailing(long call, HRESULT failure) {
  const Session session({call, failure});
  const auto which = testing::Message() << "call " << call << " fails with " << std::hex << failure;
  EXPECT_EQ(session.boxesInShow, 0U) << which << ": a message box interrupts a show";
  EXPECT_FALSE(session.hasTimers) << which;
  ASSERT_EQ(strict::world().objects, 0) << which << ": objects that somebody still refers to";
}

long callsOfASession() {
  const long calls = Session({}).calls;
  EXPECT_GT(calls, 100) << "a session in which nothing fails";
  return calls;
}

TEST(MisbehavingHost, ACallThatFailsInAnyWayEndsNothingButItself) {
  const long calls = callsOfASession();
  for (const HRESULT failure : Failures) {
    for (long call = 1; call <= calls; ++call) ASSERT_NO_FATAL_FAILURE(withFailing(call, failure));
  }
}

/// A fifth of it, for where sessions take their time.
TEST(MisbehavingHost, ACallThatFailsInOneWayEndsNothingButItself) {
  const long calls = callsOfASession();
  for (long call = 1; call <= calls; ++call) {
    ASSERT_NO_FATAL_FAILURE(withFailing(call, Failures.at(static_cast<std::size_t>(call) % Failures.size())));
  }
}

}  // namespace
}  // namespace conformance
