#include "opc/OldFormats.h"

#include "basic/CompoundFile.h"

namespace opc {

std::string describeOldFormat(std::string_view bytes) {
  if (!basic::IsCompoundFile(bytes)) return {};
  if (basic::HasCompoundEntry(bytes, "EncryptedPackage")) {
    return "it is encrypted. Remove its password in PowerPoint and save it again.";
  }
  if (basic::HasCompoundEntry(bytes, "PowerPoint Document")) {
    return "it is in the binary format of PowerPoint 97 to 2003. Save it as .pptx in PowerPoint.";
  }
  return "it is an OLE compound file, no presentation of the formats pptx, pptm, ppsx, potx";
}

}  // namespace opc
