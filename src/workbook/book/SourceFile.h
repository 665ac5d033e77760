#pragma once

#include <string>

#include "host/services.h"
#include "opc/Files.h"

namespace workbook {

/// Reads a file at once, whether or not another program has it open. While it
/// looks as if it were just being written (it is empty, its ZIP archive has no
/// end, it changed during the read), it is read again for some 300 ms, in which
/// the loop runs; after that it is taken as it is. The loop also runs while a file
/// on another machine is read (host/drives.h). Throws basic::Error, also for
/// a file of more than 256 MB.
opc::FileContent readSourceFile(const std::string& path, host::Loop& loop);

}  // namespace workbook
