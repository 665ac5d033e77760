// How a desk opens its deck, saves it, and takes up what others make of its file.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "ado/Errors.h"
#include "app/desk/Desk.h"
#include "app/desk/LogForm.h"
#include "app/wiring/Failure.h"
#include "basic/Counted.h"
#include "model/modSample.h"
#include "pages/modPages.h"
#include "platform/Module.h"
#include "platform/Settings.h"
#include "web/http/Secret.h"

namespace app {

namespace {

namespace fs = std::filesystem;

std::vector<Roots::Root> rootsFor(const std::string& deck, const std::vector<std::string>& allowed) {
  std::vector<Roots::Root> roots;
  roots.push_back({"Beside the deck", fs::absolute(deck).parent_path().string()});
  for (const std::string& folder : allowed) {
    roots.push_back({fs::path(folder).filename().string(), folder});
  }
  for (const auto& [prefix, folder] : platform::Settings().entries("Paths"))
    roots.push_back({prefix, folder});
  roots.push_back({"Lumenfold", host::Current().module->Path()});
  return roots;
}

std::string listOf(const std::vector<ForeignSource>& sources) {
  std::string list;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (i > 0) list += i + 1 == sources.size() ? " and " : ", ";
    list += sources[i].name;
  }
  return list;
}

web::Download downloadOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  if (!file) fail(path.string() + ": the file cannot be read.");
  return {path.filename().string(), std::make_shared<const std::string>(std::move(bytes).str())};
}

/// What was agreed to, a line each: the deck and its sources.
class Agreements {
 public:
  Agreements(const std::string& folder, const std::string& deck, const std::string& sources)
      : file_(fs::path(folder) / "agreed-sources"), line_(deck + '\t' + sources) {}

  [[nodiscard]] bool areKnown() const {
    std::ifstream file(file_);
    for (std::string line; std::getline(file, line);) {
      if (line == line_) return true;
    }
    return false;
  }
  /// What cannot be remembered is asked again.
  void add() const {
    std::error_code ignored;
    fs::create_directories(file_.parent_path(), ignored);
    std::ofstream(file_, std::ios::app) << line_ << '\n';
    fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write, ignored);
  }

 private:
  fs::path file_;
  std::string line_;
};

}  // namespace

Desk::Services::Services(host::MessageBox& messages, host::Jobs& jobs, Forms::View& forms, host::Files& files,
                         host::Shell& shell, host::Distribution& distribution)
    : usual_(host::Current()) {
  host::Services services = usual_;
  services.messageBox = &messages;
  services.jobs = &jobs;
  services.forms = &forms;
  services.files = &files;
  services.shell = &shell;
  services.distribution = &distribution;
  host::Use(services);
}

Desk::Desk(Environment& environment, Options options)
    : environment_(environment),
      options_(std::move(options)),
      assets_("assets/" + web::newSecret() + '/'),
      notices_([this] { requestFlush(); }),
      jobs_(environment.loop(), *host::Current().clock,
            [&environment](std::function<void()> handler) {
              environment.loop().postOutermost(std::move(handler));
            }),
      heldJobs_(jobs_),
      forms_({[this] { return activeWindow(); },
              [this](const std::string& window, std::string_view event, const json::Json& data) {
                if (server_ != nullptr) server_->send(window, event, data);
              },
              [this] { requestFlush(); },
              [this](const std::string& path) {
                const std::string name = pictures_.nameOf(path);
                return name.empty() ? name : assets_ + name;
              }}),
      shell_(
          *host::Current().shell,
          [this](const std::string& url) {
            if (server_ != nullptr) server_->send(activeWindow(), "open", {{"url", url}});
          },
          [] { std::make_shared<LogForm>()->Show(Forms::Placement::Dialog); },
          [this](const std::string& file) { offerCopy(file); }),
      roots_(rootsFor(options_.deck, options_.allowed)),
      access_(roots_),
      files_(*host::Current().files, access_),
      services_(notices_, heldJobs_, forms_, files_, shell_, distribution_),
      missing_(notices_, {[this](const LinkRepair& repair, const std::string& choice) {
                            findings_.mend(host_.application(), *open_, repair, choice);
                          },
                          [this] { findings_.check(*open_); }}),
      nearby_(fs::absolute(options_.deck).lexically_normal().string()),
      show_((fs::temp_directory_path() / ("lumenfold-show-" + web::newSecret())).string(),
            environment.loop()),
      clock_(environment.loop().CreateTimer([this] { tick(); })) {
  // MissingColumns says it, with what can be done.
  notices_.passOver([](std::string_view text) { return text.find(ado::ItemNotFound) != text.npos; });
  const auto guard = [this](const std::string& path) { access_.require(path); };
  environment_.guardPaths(guard);
  host_.application().guardLinks(guard);
  environment_.readDatabasesOnly(true);
  for (const std::string& file : LF2000::modSending::SettingsFiles()) access_.grant(file);
  LF2000::modPages::ShowUsesWith([this](const std::string& connection) {
    if (server_ != nullptr) server_->send(activeWindow(), "uses", {{"connection", connection}});
  });
  heldJobs_.hold();
  open_ = openDeck(host_.open(options_.deck));
  edited_ = std::make_unique<EditedDeck>(
      host_.application(), environment_.loop(), open_->presentation,
      EditedDeck::Options{options_.stateFolder, options_.lock, [this] { return activeWindow(); },
                          [this] { return open_->showingSample(); }},
      hearer());
  whyReadOnly_ = edited_->file().whyReadOnly();
  jobs_.onChange([this] { requestFlush(); });
  host_.application().bars().onChange([this] { requestFlush(); });
  askForSources();
  offerRecovery();
  lookForOwner();
  constexpr std::int32_t second = 1000;
  clock_->Interval(second);
  clock_->Enabled(true);
}

Desk::~Desk() {
  *self_ = nullptr;
  forms_.closeAll();
  LF2000::modPages::ShowUsesWith({});
  host_.application().bars().onChange({});
  jobs_.onChange({});
  host_.application().activate(nullptr);
  edited_.reset();
  environment_.guardPaths({});
  environment_.readDatabasesOnly(false);
}

std::unique_ptr<OpenDeck> Desk::openDeck(std::shared_ptr<deck::Presentation> presentation) {
  return std::make_unique<OpenDeck>(host_, std::move(presentation), environment_.loop(), problems_, assets_,
                                    [this] { requestFlush(); });
}

EditedDeck::Hearer Desk::hearer() {
  EditedDeck::Hearer hearer;
  // What it asks for anew is asked for first.
  hearer.replacing = [this] { heldJobs_.hold(); };
  hearer.replaced = [this](const std::shared_ptr<deck::Presentation>& before, std::size_t kept) {
    show(before, kept);
  };
  hearer.newer = [this] { offerNewer(); };
  hearer.broken = [this](const std::string& why) {
    notices_.tell(Notices::Level::Warning, "A newer version of the deck cannot be read. " + why);
  };
  hearer.problem = [this](const std::string& problem) { notices_.tell(Notices::Level::Warning, problem); };
  return hearer;
}

/// A deck may come from anywhere: what it asks for elsewhere is contacted when its author agrees.
void Desk::askForSources() {
  notices_.dismiss(sourcesNotice_);
  std::vector<std::string> folders;
  for (int slide = 1; slide <= open_->slides.count(); ++slide) {
    for (const LinkedShape& link : open_->slides.links(slide)) folders.push_back(link.objectFolder);
  }
  const auto sources = foreignSources(*open_->model, folders, open_->presentation->missingPictures(), roots_);
  const std::string list = listOf(sources);
  const Agreements agreements(options_.stateFolder, open_->presentation->FullName(), list);
  if (sources.empty() || agreements.areKnown()) return openSources(sources);
  hasSources_ = false;
  heldJobs_.passOthers();
  const Notices::Action open{"open", "Open them", [this, sources, agreements] {
                               agreements.add();
                               openSources(sources);
                             }};
  const Notices::Action look{"look", "Look first", [this, list, open] {
                               sourcesNotice_ = notices_.tell(
                                   Notices::Level::Info, "Nothing is asked of " + list + " yet.", {}, {open});
                             }};
  sourcesNotice_ =
      notices_.tell(Notices::Level::Warning, "This deck asks for data from " + list + ".", {}, {open, look});
}

void Desk::openSources(const std::vector<ForeignSource>& sources) {
  for (const ForeignSource& source : sources) {
    if (!source.path.empty()) access_.grant(source.path);
  }
  hasSources_ = true;
  if (!sources.empty()) open_->presentation->loadLinkedPictures();
  heldJobs_.release();
}

/// Told once for each time that the deck is opened elsewhere, for as long as it is.
void Desk::lookForOwner() {
  const auto before = std::exchange(ownerFile_, edited_->file().ownerFile());
  if (before == ownerFile_) return;
  notices_.dismiss(ownerNotice_);
  if (!ownerFile_) return;
  const bool isPowerPoint = fs::path(*ownerFile_).filename().string().starts_with("~$");
  ownerNotice_ = notices_.tell(
      Notices::Level::Warning,
      std::string(isPowerPoint ? "PowerPoint" : "Another program") +
          " has this deck open. What you save here it will not see, and may write over. Close it there "
          "first.");
}

/// A deck that could not be written shows its data again.
void Desk::save() {
  if (LF2000::modGlobalFunctions::OfflineGenerationActive)
    fail("An off-line copy of the deck is being made. Save when it is ready.");
  settle();
  lookForOwner();
  try {
    const std::size_t samples = open_->showingSample().size();
    const auto saved = edited_->save();
    if (samples > 0) open_->model->FillConnection(LF2000::modSample::Number);
    tellSaved(saved, samples);
  } catch (...) {
    open_->model->FillValues(false);
    throw;
  }
}

void Desk::tellSaved(EditedDeck::Saved saved, std::size_t samples) {
  std::string text;
  if (saved == EditedDeck::Saved::Written) text = "Saved. The file holds no live values.";
  if (saved == EditedDeck::Saved::WrittenAnew) text = "The deck's file was gone; it was written anew.";
  if (samples > 0) {
    text += (text.empty() ? "" : " ") + basic::Counted(samples, "link") + " to sample data" +
            (samples == 1 ? " is" : " are") + " not saved. Connect data of your own to keep " +
            (samples == 1 ? "it." : "them.");
  }
  if (!text.empty()) notices_.tell(Notices::Level::Info, text);
}

std::string Desk::beginShow() {
  if (edited_->unsaved() > 0) save();
  return show_.url(open_->presentation->FullName());
}

/// A page of the help, or what it refers to.
std::optional<web::Asset> Desk::help(std::string_view name) {
  const fs::path file = fs::path(platform::helpFolder()) / name;
  std::ifstream in(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (!in) return std::nullopt;
  return web::Asset{std::make_shared<const std::string>(std::move(bytes).str()),
                    name.ends_with(".css") ? "text/css; charset=utf-8" : "text/html; charset=utf-8"};
}

web::Download Desk::deck() { return downloadOf(open_->presentation->FullName()); }

web::Download Desk::copy(std::string_view name) {
  const auto found = copies_.find(name);
  if (found == copies_.end()) {
    constexpr int NotFound = 404;
    throw web::Refusal(NotFound, "No copy of that name was made here.");
  }
  return downloadOf(found->second);
}

/// Its author may sit in front of another machine than the one that it was written to.
void Desk::offerCopy(const std::string& file) {
  const std::string name = fs::path(file).filename().string();
  const std::string path = "copies/" + std::to_string(copies_.size() + 1);
  copies_.emplace(path.substr(path.find('/') + 1), file);
  notices_.tell(Notices::Level::Info, name + " was written.", {},
                {{"download", "Download it",
                  [this, path, name] {
                    if (server_ != nullptr)
                      server_->send(activeWindow(), "download", {{"path", path}, {"name", name}});
                  },
                  /*isKept=*/true}});
}

void Desk::takeDeck(std::string bytes) {
  if (isOldPresentation(bytes)) {
    importOld(std::move(bytes));
  } else {
    keepDeck(std::move(bytes));
  }
  flush();
}

/// LibreOffice takes its time, in which authors go on.
void Desk::importOld(std::string bytes) {
  const auto isCancelled = std::make_shared<bool>(false);
  const auto old = std::make_shared<const std::string>(std::move(bytes));
  const auto imported = std::make_shared<ImportedDeck>();
  host::Job job;
  job.Caption = "Importing the old presentation";
  job.Work = [this, old, imported, isCancelled] {
    PresentationConversion conversion;
    conversion.isCancelled = [isCancelled] { return *isCancelled; };
    *imported = importDeck(*old, "The old presentation", environment_.loop(), conversion);
  };
  job.Cancel = [isCancelled] { *isCancelled = true; };
  job.Done = [this, imported](const host::JobEnd& end) {
    if (end.How == host::JobEnd::Kind::Cancelled) return;
    if (end.How != host::JobEnd::Kind::Done) {
      notices_.tell(Notices::Level::Error, end.Description);
      return;
    }
    takeImported(std::move(*imported));
  };
  jobs_.Start(std::move(job));
}

void Desk::takeImported(ImportedDeck imported) try {
  keepDeck(std::move(imported.bytes));
  std::string details;
  for (const std::string& line : imported.warnings) details += line + '\n';
  for (const std::string& line : imported.lost) details += "Lost: " + line + '\n';
  const auto level = imported.lost.empty() ? Notices::Level::Info : Notices::Level::Warning;
  notices_.tell(level, "The old presentation was imported, " + imported.summary() + '.', details);
} catch (const basic::Error& error) {
  notices_.tell(Notices::Level::Error, error.description);
}

/// Makes it the newer version, as if PowerPoint had saved it.
void Desk::keepDeck(std::string bytes) {
  const fs::path file = fs::temp_directory_path() / ("lumenfold-deck-" + web::newSecret());
  const auto remove = [&](const fs::path*) {
    std::error_code ignored;
    fs::remove(file, ignored);
  };
  const std::unique_ptr<const fs::path, decltype(remove)> guard(&file, remove);
  {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) fail("The deck that was sent cannot be kept on this machine's disk.");
  }
  // It is read from there; nobody needs it twice.
  std::string().swap(bytes);
  edited_->upload(file.string());
}

}  // namespace app
