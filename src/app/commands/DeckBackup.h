#pragma once

#include <string>

namespace app {

/// Of the option --backup.
inline constexpr const char* BackupHelp =
    "Keep the deck as it is now beside it (board.backup.pptx), unless there is such a file already";

/// Keeps a deck's file as it is now beside it, board.backup.pptx of board.pptx, and says so on standard
/// output. A copy that is there already is the older one, and stays. Throws basic::Error when the file cannot
/// be read or the copy not be written.
void keepBackup(const std::string& deck);

}  // namespace app
