# For 32-bit Windows, by Debian's mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(LUMENFOLD_MINGW i686-w64-mingw32)
# Numbers are rounded as everywhere else; the host's stack is aligned to four bytes alone.
set(CMAKE_C_FLAGS_INIT "-march=pentium4 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-march=pentium4 -mfpmath=sse -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
