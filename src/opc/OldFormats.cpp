#include "opc/OldFormats.h"

#include "basic/CompoundFile.h"

namespace opc {

std::string describeOldFormat(std::string_view bytes) {
  if (!basic::IsCompoundFile(bytes)) return {};
  if (basic::HasCompoundEntry(bytes, "EncryptedPackage")) {
    return "it is encrypted. Remove its password in PowerPoint and save it again.";
  }
  if (basic::HasCompoundEntry(bytes, "PowerPoint Document")) {
    return "it is in the binary format of PowerPoint 97 to 2003. Make a deck of it with 'lumenfold import'.";
  }
  return "it is an OLE compound file, no presentation of the formats pptx, pptm, ppsx, potx";
}

std::string describeNoPackage(std::string_view beginning, std::string_view detail) {
  if (!beginning.starts_with("PK\x03\x04")) {
    return "it is no ZIP archive, so no presentation of the formats pptx, pptm, ppsx, potx";
  }
  return "the file is damaged or not complete (" + std::string(detail) + ")";
}

}  // namespace opc
