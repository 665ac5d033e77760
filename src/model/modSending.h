#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/distribution.h"
#include "host/powerpoint.h"

/// What it takes to send a presentation to the computers that show it (host/distribution.h).
namespace LF2000::modSending {

struct Options {
  /// Nothing: as it was sent last, or live.
  std::optional<host::SendingWay> Way = {};
  /// Empty: as the settings say.
  std::string Folder = {};
  /// The file of a private key; empty: as the settings say.
  std::string KeyFile = {};
};

/// "Lumenfold.INI", section "Distribution": keys "Folder" and "Key". In the add-in folder, else beside the
/// settings file. A relative path is taken from the file's folder; what is missing is empty.
struct Settings {
  std::string Folder;
  std::string KeyFile;
};
[[nodiscard]] Settings ReadSettings();
/// Where that file may lie.
[[nodiscard]] std::vector<std::string> SettingsFiles();
/// What is said where no folder is given and the settings name none.
inline constexpr std::string_view NoFolder = "Distribution folder not specified in Lumenfold.INI file.";

/// The options with what the settings say. The folder may be empty still.
[[nodiscard]] Options Complete(Options options);

/// The presentation's name, without path and ending.
[[nodiscard]] std::string NameOf(PowerPoint::Presentation& presentation);

/// The host's; raises that there is none.
[[nodiscard]] host::Distribution& Sender();

/// Changes the paths in the tags of a copy, so that it can be shown elsewhere: made absolute, or where
/// `places` puts the files when these go along. "[LUMENFOLDFOLDER]" stays in the first case, as it means
/// another folder on each computer. `original` is the presentation's full name. Answers what it reads.
[[nodiscard]] std::vector<host::Enclosure> Redirect(PowerPoint::Presentation& copy, host::SendingWay way,
                                                    const std::string& original,
                                                    host::EnclosurePlaces& places);

}  // namespace LF2000::modSending
