#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "basic/Date.h"

namespace host {

/// How a presentation is sent: its sources resolve from the computer that shows it; with the files that it
/// reads; or as an off-line copy.
enum class SendingWay : std::uint8_t { Live, Files, Frozen };

/// Where the files of a presentation stand beside it when it is sent: those of its folder as they do there,
/// others below "files" under their own names.
class EnclosurePlaces {
 public:
  /// With the presentation's full name.
  explicit EnclosurePlaces(std::string_view presentation);
  /// The place of a file or a folder, relative, with "/"; empty for the presentation's folder itself. Always
  /// the same for the same path, and never that of another.
  [[nodiscard]] std::string Of(std::string_view path);

 private:
  std::string folder_;
  std::map<std::string, std::string, std::less<>> places_;
  /// In upper case, as other systems compare.
  std::set<std::string> taken_;
};

/// What a presentation reads.
struct Enclosure {
  /// A file, or a folder whose files of one kind are meant, those of the folders below it as well.
  std::string Source;
  /// Where it stands beside the presentation when it is sent with its files (EnclosurePlaces).
  std::string Path;
  bool IsFolder = false;
  /// Of a folder: the ending of the files, without the point; empty for pictures of any kind.
  std::string Extension = {};
  /// What reads it, for people: "connection 001 (Today)".
  std::string Reader = {};
};

/// A presentation that is ready to be sent.
struct Parcel {
  /// The distribution folder, as its user wrote it.
  std::string Folder;
  /// The presentation's name there, without path and ending.
  std::string Name;
  SendingWay Way = SendingWay::Live;
  /// The file that is sent, on this machine.
  std::string Presentation;
  /// The presentation's own file: what its links are relative to, and never replaced by what is sent.
  std::string Original;
  /// By way of files they go along.
  std::vector<Enclosure> Enclosures;
  EnclosurePlaces Places{Original};
  /// A private key's file, by which it is signed; empty: it is not.
  std::string KeyFile;
};

struct Sent {
  /// Where the presentation lies now.
  std::string Place;
  std::size_t Files = 0;
  std::uint64_t Bytes = 0;
  /// What did not go along, and what other computers will lack; a sentence each.
  std::vector<std::string> Warnings;
};

/// What the distribution folder says of a presentation.
struct LastSending {
  SendingWay Way = SendingWay::Live;
  basic::Date When;
  bool IsWithdrawn = false;
};

/// The way of presentations to the computers that show them. Members throw basic::Error saying what cannot be
/// done and why; the folder is as it was then. They may let the loop run (host/drives.h).
class Distribution {
 public:
  virtual ~Distribution() = default;
  /// Puts it into its folder, whole or not at all, in the place of a former one of that name. Files that its
  /// shapes are linked to: by way of files they go along, and the links lead to them; else the links become
  /// absolute.
  virtual Sent Send(const Parcel& parcel) = 0;
  /// Takes a presentation back.
  virtual void Withdraw(const std::string& folder, const std::string& name, const std::string& keyFile) = 0;
  /// Nothing where it was never sent.
  [[nodiscard]] virtual std::optional<LastSending> Last(const std::string& folder,
                                                        const std::string& name) = 0;
};

}  // namespace host
