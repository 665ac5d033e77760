#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A file system of another machine, or one that a program serves, mounted here.
struct NetworkMount {
  int id = 0;  // another one when it is mounted anew
  std::string point;
};

/// What is mounted where, as proc(5) has it in /proc/self/mountinfo. File systems
/// themselves are never asked: one whose server is gone would not answer.
class MountTable {
 public:
  MountTable();
  ~MountTable();
  MountTable(const MountTable&) = delete;
  MountTable& operator=(const MountTable&) = delete;

  /// Where a path leads to another machine, by itself or through symbolic links
  /// on this one; read anew when something was mounted or unmounted. FUSE and
  /// automatic mounts count as well, local disks served by FUSE (fuseblk) do not.
  [[nodiscard]] std::optional<NetworkMount> networkMountOf(const std::string& path);

  /// Takes the table from a text in the format of mountinfo instead.
  void read(std::istream& mountinfo);

 private:
  struct Entry {
    NetworkMount mount;
    bool isNetwork;
  };
  [[nodiscard]] const NetworkMount* at(const std::string& path) const;
  void readIfChanged();

  int changes_;  // readable, in a way, when the table has changed
  std::vector<Entry> entries_;
  bool hasNetwork_ = false;
};

}  // namespace platform
