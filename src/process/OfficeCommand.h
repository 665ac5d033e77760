#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace process {

/// What LibreOffice is to make of which file.
struct OfficeConversion {
  std::string program = "soffice";
  /// Two instances cannot share one.
  std::filesystem::path profile;
  /// As --convert-to takes it: "xlsx", or a filter with its options.
  std::string format;
  /// The folder of the result, which has the input's name with another ending.
  std::filesystem::path out;
  std::filesystem::path input;
};

/// Makes a profile, unless it is there, by which LibreOffice opens no file that another one is linked to, and
/// runs no macro: files come from strangers, and what they lead to may be none of their business. Throws
/// std::filesystem::filesystem_error.
void makeOfficeProfile(const std::filesystem::path& profile);

/// Converts a file without a window. The profile is made before (makeOfficeProfile).
std::vector<std::string> officeCommand(const OfficeConversion& conversion);

/// What a conversion said at last, of what it wrote into that file; empty for nothing.
std::string lastLine(const std::filesystem::path& file);

/// The exit status where a bounded command's program is not installed.
inline constexpr int NotInstalled = 127;

/// The command within bounds of memory (4 GB), of what it writes (512 MB a file) and of processor time (2
/// minutes): what other people's files make it ask for ends that command alone.
std::vector<std::string> boundedCommand(const std::vector<std::string>& command);

}  // namespace process
