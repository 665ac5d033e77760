#pragma once

// The system's headers, without those macros of theirs that rename what ports and adapters call by the same
// name. Everything that needs them includes this file, before anything else of its own or after: no matter.

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>

#undef Yield
#undef DeleteFile
#undef GetObject
#undef MessageBox
#undef interface
