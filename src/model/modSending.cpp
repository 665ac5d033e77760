// Settings of the distribution, and the paths in the copy that is sent.

#include "model/modSending.h"

#include <algorithm>
#include <set>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "basic/IniLine.h"
#include "basic/Strings.h"
#include "connections/clsConnection.h"
#include "host/services.h"
#include "model/clsShape.h"
#include "model/modSlides.h"
#include "model/modTags.h"

namespace LF2000::modSending {

namespace {

std::string FolderOf(std::string_view path) {
  const std::size_t end = path.find_last_of("/\\");
  return end == std::string_view::npos ? "." : std::string(path.substr(0, end));
}

/// Nothing where there is no such file.
std::optional<std::string> TextOf(const std::string& path) {
  std::optional<std::string> text;
  modGlobalFunctions::IgnoreErrors([&] {
    const host::Bytes bytes = host::Current().files->OpenForInput(path)->ReadAll();
    text.emplace(bytes.data.get(), bytes.size);
  });
  return text;
}

Settings SettingsIn(const std::string& file, std::string_view text) {
  using basic::EqualsIgnoreCase;
  constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  if (basic::StartsWith(text, ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  Settings settings;
  bool isOurs = false;
  for (const std::string& line : basic::Split(text, '\n')) {
    const basic::IniLine said = basic::ReadIniLine(line);
    if (said.kind == basic::IniLine::Kind::Section) isOurs = EqualsIgnoreCase(said.name, "Distribution");
    if (!isOurs || said.kind != basic::IniLine::Kind::Entry) continue;
    const std::string path = modGlobalFunctions::ResolvePath(said.value, file);
    if (EqualsIgnoreCase(said.name, "Folder")) settings.Folder = path;
    if (EqualsIgnoreCase(said.name, "Key")) settings.KeyFile = path;
  }
  return settings;
}

/// Where the path of a file leads.
class Redirection {
 public:
  Redirection(host::SendingWay way, const std::string& original, host::EnclosurePlaces& places)
      : goAlong_(way == host::SendingWay::Files), original_(original), places_(places) {}

  /// The path that the copy is to hold. `reader` is for people.
  std::string File(const std::string& path, const std::string& reader) {
    if (path.empty() || !MayBeChanged(path)) return path;
    return Enclose({modGlobalFunctions::ResolvePath(path, original_), {}, false, {}, reader});
  }
  /// The same of a folder with pictures; an empty one is the presentation's own.
  std::string Folder(const std::string& path, const std::string& extension, const std::string& reader) {
    if (!MayBeChanged(path)) return path;
    const bool isOwn = basic::Trim(path).empty();
    const std::string folder = isOwn ? FolderOf(original_) : modGlobalFunctions::ResolvePath(path, original_);
    return Enclose({folder, {}, true, extension, reader});
  }
  std::vector<host::Enclosure> Take() { return std::move(enclosures_); }

 private:
  [[nodiscard]] bool MayBeChanged(const std::string& path) const {
    const bool isPlaceholder = path.find("[LUMENFOLDFOLDER]") != std::string::npos;
    const bool isAddress = path.find("://") != std::string::npos;
    return !isAddress && (goAlong_ || !isPlaceholder);
  }
  std::string Enclose(host::Enclosure enclosure) {
    enclosure.Path = places_.Of(enclosure.Source);
    std::string path = goAlong_ ? enclosure.Path : enclosure.Source;
    if (told_.insert({enclosure.Source, enclosure.Extension}).second) {
      enclosures_.push_back(std::move(enclosure));
    }
    return path;
  }

  bool goAlong_;
  const std::string& original_;
  host::EnclosurePlaces& places_;
  std::set<std::pair<std::string, std::string>> told_;
  std::vector<host::Enclosure> enclosures_;
};

void RedirectConnection(clsConnection& connection, Redirection& to) {
  const std::string reader =
      "connection " + connection.ConnectionTagNumber() + " '" + connection.ConnectionDescription() + "'";
  if (connection.ConnectionType() == static_cast<std::int32_t>(ConnectionKind::Database)) {
    connection.ConnectionString(modGlobalFunctions::WithDatabaseFiles(
        connection.ConnectionString(), [&](const std::string& path) { return to.File(path, reader); }));
  } else {
    connection.ConnectionFileString(to.File(connection.ConnectionFileString(), reader));
  }
}

void RedirectConnections(PowerPoint::Tags& tags, Redirection& to) {
  std::vector<std::pair<std::string, std::string>> changed;
  modTags::ForEachTag(tags, modTags::Connection, [&](const std::string& number, const std::string& value) {
    // One that cannot be read is sent as it stands.
    modGlobalFunctions::IgnoreErrors([&] {
      clsConnection connection;
      connection.ConnectionTagNumber(number);
      connection.TagString(value);
      RedirectConnection(connection, to);
      changed.emplace_back(std::string(modTags::Connection) + number, connection.TagString());
    });
  });
  for (const auto& tag : changed) tags.Add(tag.first, tag.second);
}

void RedirectShape(const std::shared_ptr<PowerPoint::Shape>& shape, Redirection& to) {
  clsShape link;
  link.ShapeItem(shape);
  const bool showsFiles =
      link.LumenfoldEnabled() && link.SourceType() == static_cast<std::int32_t>(SourceType::LinkedObject);
  if (!showsFiles) return;
  link.KeepCurrent();
  link.NewObjectFolder(
      to.Folder(link.ObjectFolder(), link.ObjectExtension(), "shape '" + shape->Name() + "'"));
  link.SetShapeTags();
}

}  // namespace

std::vector<std::string> SettingsFiles() {
  constexpr std::string_view Name = "Lumenfold.INI";
  using modGlobalFunctions::FileInFolder;
  const host::Services& services = host::Current();
  return {FileInFolder(services.module->Path(), Name),
          FileInFolder(FolderOf(services.settings->Location()), Name)};
}

Settings ReadSettings() {
  Settings settings;
  for (const std::string& file : SettingsFiles()) {
    const auto text = TextOf(file);
    if (!text) continue;
    settings = SettingsIn(file, *text);
    if (!settings.Folder.empty()) break;
  }
  return settings;
}

Options Complete(Options options) {
  const Settings settings = ReadSettings();
  if (options.Folder.empty()) options.Folder = settings.Folder;
  if (options.KeyFile.empty()) options.KeyFile = settings.KeyFile;
  return options;
}

std::string NameOf(PowerPoint::Presentation& presentation) {
  const std::string path = presentation.FullName();
  const std::size_t folder = path.find_last_of("/\\");
  std::string name = folder == std::string::npos ? path : path.substr(folder + 1);
  const std::size_t ending = name.rfind('.');
  if (ending != std::string::npos && ending > 0) name.erase(ending);
  return name;
}

host::Distribution& Sender() {
  if (auto* const sender = host::Current().distribution) return *sender;
  throw basic::Error(basic::AdapterError, "modSending", "Presentations cannot be sent from here.");
}

std::vector<host::Enclosure> Redirect(PowerPoint::Presentation& copy, host::SendingWay way,
                                      const std::string& original, host::EnclosurePlaces& places) {
  Redirection to(way, original, places);
  RedirectConnections(*copy.Tags(), to);
  modSlides::ForEachSlide(copy, [&](PowerPoint::Slide& slide) {
    modSlides::ForEachShape(slide, [&](const auto& shape) { RedirectShape(shape, to); });
  });
  return to.Take();
}

}  // namespace LF2000::modSending
