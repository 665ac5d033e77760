#pragma once

#include <string>
#include <vector>

#include "host/services.h"

namespace app {

/// For as long as it lives, no message box comes up, and what would go to the
/// errors log is collected here instead: a verb that only looks must not take
/// away the log of a show that runs beside it.
class CollectedErrors {
 public:
  CollectedErrors();
  ~CollectedErrors();
  CollectedErrors(const CollectedErrors&) = delete;
  CollectedErrors& operator=(const CollectedErrors&) = delete;

  /// As the log would have them, without time and number, each once.
  [[nodiscard]] const std::vector<std::string>& texts() const { return files_.texts; }

 private:
  class LogAside final : public host::Files {
   public:
    explicit LogAside(host::Files& files) : files_(files) {}
    std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override {
      return files_.OpenForInput(path);
    }
    void Append(std::string_view path, std::string_view text) override;
    void Kill(std::string_view path) override;
    void Name(std::string_view path, std::string_view newPath) override;
    [[nodiscard]] basic::Date FileDateTime(std::string_view path) const override {
      return files_.FileDateTime(path);
    }
    [[nodiscard]] std::string LocalPath(std::string_view path) const override {
      return files_.LocalPath(path);
    }
    [[nodiscard]] std::string FileWithin(std::string_view folder, std::string_view name) const override {
      return files_.FileWithin(folder, name);
    }
    [[nodiscard]] std::string TempPath() const override { return files_.TempPath(); }
    [[nodiscard]] std::string TempFileName(std::string_view folder, std::string_view prefix) override {
      return files_.TempFileName(folder, prefix);
    }

    std::vector<std::string> texts;

   private:
    host::Files& files_;
  };

  class NoBoxes final : public host::MessageBox {
   public:
    host::MsgBoxResult MsgBox(std::string_view, std::int32_t, std::string_view) override {
      return host::MsgBoxResult::No;
    }
  };

  host::Services usual_;
  LogAside files_;
  NoBoxes noBoxes_;
};

}  // namespace app
