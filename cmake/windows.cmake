# For 64-bit Windows, by Debian's mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(LUMENFOLD_MINGW x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
