#include "connections/TextFileScanner.h"

namespace LF2000 {

const char* FindClosingQuote(const char* opening, const char* end) {
  for (const char* at = opening + 1; at != end; at += 2) {
    at = static_cast<const char*>(std::memchr(at, '"', static_cast<std::size_t>(end - at)));
    if (at == nullptr || at + 1 == end || at[1] != '"') return at;
  }
  return nullptr;
}

}  // namespace LF2000
