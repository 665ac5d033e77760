#include "host/services.h"

namespace host {

namespace {
Services current;
}

const Services& Current() { return current; }
void Use(const Services& services) { current = services; }

}  // namespace host
