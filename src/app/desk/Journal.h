#pragma once

#include <cstddef>
#include <ctime>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/desk/EditLog.h"

namespace app {

/// Unsaved edits as they were kept.
struct KeptEdits {
  OwnerChanges edits;
  /// The names of connections' tags that were kept without a password.
  std::set<std::string> withoutSecrets;
  /// When the last of them was written.
  std::time_t written = 0;
};

/// What is unsaved of a deck, kept in a folder against the end of the program: a JSON file of mode 0600,
/// named by the deck's path, written beside and renamed. It holds tags of the system and names, and the texts
/// of shapes whose link was taken off; passwords of connections are left out. Not flushed to the disk: it is
/// to outlive the program, not the machine.
///
/// What an earlier run has left waits until its author has recovered or discarded it, however often the
/// program ends before that.
class Journal {
 public:
  /// Reads what earlier runs have left. The folder is made when something is written.
  Journal(std::string folder, std::string deck);

  /// What earlier runs left.
  [[nodiscard]] const std::optional<KeptEdits>& recoverable() const { return recoverable_; }
  /// It has been recovered, or nobody wants it.
  void forgetRecoverable();
  /// What could not be read was put aside; where and why, a sentence each.
  [[nodiscard]] const std::vector<std::string>& damages() const { return damages_; }

  /// What is unsaved now; nothing removes the file. Answers why it cannot be written, as a sentence, else
  /// nothing: no reason to keep an author from going on.
  [[nodiscard]] std::optional<std::string> write(const OwnerChanges& unsaved);

 private:
  [[nodiscard]] std::string left(int number) const { return path_ + "." + std::to_string(number); }
  void takeUp();
  void read(const std::string& path);

  std::string folder_;
  std::string deck_;
  std::string path_;
  std::vector<std::string> leftFiles_;
  std::optional<KeptEdits> recoverable_;
  std::vector<std::string> damages_;
};

struct CompletedEdits {
  OwnerChanges edits;
  /// The numbers of connections whose password has to be given anew.
  std::vector<std::string> withoutSecrets;
};

/// The edits with the passwords that the deck has for the same connections.
[[nodiscard]] CompletedEdits withDecksSecrets(const KeptEdits& kept, const OwnerState& deck);

}  // namespace app
