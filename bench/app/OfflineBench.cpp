// What an off-line copy of 100 slides with 20 linked shapes each costs, from the open deck to the file. The
// limit: the deck is packed twice (the copy as it was saved, the copy itself) and read once; its 2,101 tag
// parts go away.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "addin/support/modGlobalFunctions.h"
#include "app/LinkedDeck.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "model/clsPresentation.h"
#include "support/TemporaryFolder.h"

namespace {

/// Messages are not shown.
class Silence final : public host::MessageBox {
 public:
  Silence() {
    host::Services services = host::Current();
    services.messageBox = this;
    host::Use(services);
  }
  host::MsgBoxResult MsgBox(std::string_view, std::int32_t, std::string_view) override {
    return host::MsgBoxResult::OK;
  }
};

void MakeOfflineCopy(benchmark::State& state) {
  app::Environment environment;
  Silence silence;
  const support::TemporaryFolder folder;
  const std::string path = folder.write("deck.pptx", bench::linkedDeck(100, 20));
  static_cast<void>(folder.write("data.txt", bench::linkedData(2000, 0, 0)));
  app::AddInHost host;
  const auto deck = [&] {
    const LF2000::modGlobalFunctions::OfflineGeneration generation(path);
    return host.open(path);
  }();
  LF2000::clsPresentation linked;
  linked.Describe(deck);
  const std::string copy = (folder.path() / "copy.pptx").string();
  for (auto _ : state) {
    if (!linked.CreateOfflinePPT(copy)) state.SkipWithError("no copy was made");
  }
}
BENCHMARK(MakeOfflineCopy)->Unit(benchmark::kMillisecond);

}  // namespace
