#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk/Roots.h"
#include "host/services.h"
#include "model/clsPresentation.h"

namespace app {

/// A source that a deck brings along and that lies outside of a desk's folders.
struct ForeignSource {
  /// A server's name, or the path of a file or of a folder with pictures.
  std::string name;
  /// As this system knows it; empty for a server.
  std::string path;
};

/// The sources of the deck that lie outside of the roots, each once: those of its connections, the folders
/// that its links take pictures from, and the files of its linked pictures. Nothing is contacted.
[[nodiscard]] std::vector<ForeignSource> foreignSources(LF2000::clsPresentation& deck,
                                                        const std::vector<std::string>& folders,
                                                        const std::vector<std::string>& pictures,
                                                        const Roots& roots);

/// What may be read at a desk: what lies below its folders, and what its author has agreed to.
class DeskAccess {
 public:
  explicit DeskAccess(const Roots& roots) : roots_(roots) {}

  /// A file, or a folder with all that lies in it.
  void grant(const std::string& path) { granted_.insert(path); }
  /// Raises that the path, as this system knows it, is not to be read.
  void require(const std::string& path) const;

 private:
  const Roots& roots_;
  std::set<std::string> granted_;
};

/// The files of a host, as far as a desk may read them. What the program writes is not asked for, but for
/// where an author has it write: a file is made there first.
class DeskFiles final : public host::Files {
 public:
  /// Both outlive this object.
  DeskFiles(host::Files& usual, const DeskAccess& access) : usual_(usual), access_(access) {}

  [[nodiscard]] std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override;
  void Append(std::string_view path, std::string_view text) override { usual_.Append(path, text); }
  void Kill(std::string_view path) override { usual_.Kill(path); }
  void Name(std::string_view path, std::string_view newPath) override { usual_.Name(path, newPath); }
  [[nodiscard]] basic::Date FileDateTime(std::string_view path) const override;
  [[nodiscard]] std::string LocalPath(std::string_view path) const override { return usual_.LocalPath(path); }
  [[nodiscard]] std::string FileWithin(std::string_view folder, std::string_view name) const override;
  [[nodiscard]] std::string TempPath() const override { return usual_.TempPath(); }
  [[nodiscard]] std::string TempFileName(std::string_view folder, std::string_view prefix) override;

 private:
  host::Files& usual_;
  const DeskAccess& access_;
};

}  // namespace app
