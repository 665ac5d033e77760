#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk/ConflictsForm.h"
#include "app/desk/DeskAccess.h"
#include "app/desk/DeskFindings.h"
#include "app/desk/DeskForms.h"
#include "app/desk/DeskPictures.h"
#include "app/desk/DeskRequests.h"
#include "app/desk/DeskShell.h"
#include "app/desk/DeskWindow.h"
#include "app/desk/EditedDeck.h"
#include "app/desk/HeldJobs.h"
#include "app/desk/MissingColumns.h"
#include "app/desk/NearbyFiles.h"
#include "app/desk/Notices.h"
#include "app/desk/OpenDeck.h"
#include "app/desk/Roots.h"
#include "app/desk/ShowProcess.h"
#include "app/distribution/DistributionFolder.h"
#include "app/import/DeckImport.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/ToldOnce.h"
#include "platform/jobs/JobQueue.h"
#include "web/desk/Desk.h"
#include "web/desk/DeskServer.h"

namespace app {

/// One deck that is edited in browsers: its windows, and the services by which the system reaches them. What
/// a handler has changed is told to every window once, when the handler is done.
class Desk final : public web::Desk {
 public:
  struct Options {
    std::string deck;
    /// Folders besides the usual ones in which data files may be chosen.
    std::vector<std::string> allowed;
    /// Where the program keeps what it must remember: journals, what was agreed to.
    std::string stateFolder;
    /// Follows the deck's file; may be null, else it outlives the desk.
    DeckLock* lock = nullptr;
  };
  /// Opens the deck; its sources are opened behind it. The environment outlives the desk.
  Desk(Environment& environment, Options options);
  ~Desk() override;
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  /// Where changes go from now on; must outlive this object or be taken away (null).
  void connect(web::DeskServer* server) { server_ = server; }
  [[nodiscard]] const deck::Presentation& presentation() const { return *open_->presentation; }
  /// Breaks off what is being waited for.
  void shutDown() { jobs_.cancelAll(); }

  void opened(const std::string& window) override;
  void forget(const std::string& window) override;
  json::Json state(const std::string& window) override;
  void repeat(const std::string& window) override;
  json::Json act(const std::string& window, std::string_view path, const json::Json& body) override;
  json::Json look(std::string_view path, std::string_view query) override;
  [[nodiscard]] std::string assets() const override { return assets_; }
  std::optional<web::Asset> asset(std::string_view name) override;
  std::optional<web::Asset> help(std::string_view name) override;
  web::Download deck() override;
  web::Download copy(std::string_view name) override;
  void takeDeck(std::string bytes) override;

 private:
  void offerCopy(const std::string& file);
  void importOld(std::string bytes);
  void takeImported(ImportedDeck imported);
  void keepDeck(std::string bytes);
  /// Puts the desk's services in force, and the former ones back.
  class Services {
   public:
    Services(host::MessageBox& messages, host::Jobs& jobs, Forms::View& forms, host::Files& files,
             host::Shell& shell, host::Distribution& distribution);
    ~Services() { host::Use(usual_); }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

   private:
    host::Services usual_;
  };

  // Desk.cpp: windows and what they are told.

  DeskWindow& window(const std::string& name);
  [[nodiscard]] std::string activeWindow();
  [[nodiscard]] DeskRequests requests();
  /// Every key but the slide's markup.
  json::Json present(const DeskWindow& window);
  [[nodiscard]] json::Json deckJson(const DeskWindow& window) const;
  [[nodiscard]] json::Json commandsJson() const;
  [[nodiscard]] json::Json jobsJson() const;
  [[nodiscard]] json::Json othersJson(const DeskWindow& window) const;
  /// Takes up what handlers have done.
  void settle();
  void requestFlush();
  void flush();
  void tell(DeskWindow& window, const std::set<DeskSlides::Place>& changed);
  void tick();
  void moveClocks();

  // DeskVersions.cpp: the deck's file, and what it asks for. DeskOffers.cpp: other versions of it.

  [[nodiscard]] std::unique_ptr<OpenDeck> openDeck(std::shared_ptr<deck::Presentation> presentation);
  [[nodiscard]] EditedDeck::Hearer hearer();
  void askForSources();
  void openSources(const std::vector<ForeignSource>& sources);
  void offerRecovery();
  void lookForOwner();
  void recover();
  void offerNewer();
  void tellNewer();
  void recountNewer();
  [[nodiscard]] std::optional<Notices::Action> decideOneByOne(const Rebase& rebase,
                                                              const ConflictsForm::Surroundings& around);
  void takeNewer();
  void show(const std::shared_ptr<deck::Presentation>& before, std::size_t kept);
  void save();
  void tellSaved(EditedDeck::Saved saved, std::size_t samples);
  [[nodiscard]] std::string beginShow();

  Environment& environment_;
  const Options options_;
  const std::string assets_;
  /// Lets a posted flush see that this object is gone.
  std::shared_ptr<Desk*> self_ = std::make_shared<Desk*>(this);
  ToldOnce problems_;
  Notices notices_;
  platform::JobQueue jobs_;
  HeldJobs heldJobs_;
  DeskPictures pictures_;
  DeskForms forms_;
  DeskShell shell_;
  Roots roots_;
  DeskAccess access_;
  DeskFiles files_;
  DistributionFolder distribution_;
  Services services_;
  AddInHost host_;
  std::unique_ptr<OpenDeck> open_;
  std::unique_ptr<EditedDeck> edited_;
  DeskFindings findings_;
  MissingColumns missing_;
  NearbyFiles nearby_;
  ShowProcess show_;
  /// Copies that were made here, by the names under which they are offered.
  std::map<std::string, std::string, std::less<>> copies_;
  LF2000::DataPreview preview_ = LF2000::DataPreview::AsTheyAre;
  std::map<std::string, std::unique_ptr<DeskWindow>> windows_;
  std::unique_ptr<host::Timer> clock_;
  web::DeskServer* server_ = nullptr;
  /// What the data and the state of connections were when forms were told of them last.
  json::Json formsKnow_;
  std::optional<std::string> whyReadOnly_;
  /// The deck's own sources may be contacted.
  bool hasSources_ = true;
  /// Of the notice that asks for them.
  int sourcesNotice_ = 0;
  /// The file by which another program says that it has the deck open, and the notice of that.
  std::optional<std::string> ownerFile_;
  int ownerNotice_ = 0;
  /// The notice of a newer version, and what it says.
  int newerNotice_ = 0;
  std::string newerText_;
  std::string newerDetails_;
  std::size_t newerKept_ = 0;
  int recoveryNotice_ = 0;
  std::weak_ptr<ConflictsForm> conflictsForm_;
  bool isFlushRequested_ = false;
  int ticks_ = 0;
};

}  // namespace app
