# What the toolchains for Windows have in common; the file that includes this one sets
# LUMENFOLD_MINGW to the prefix of its tools.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${LUMENFOLD_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${LUMENFOLD_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${LUMENFOLD_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${LUMENFOLD_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's own libraries go into each file, so that it needs nothing but the system's DLLs.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -static)
  set(CMAKE_${kind}_LINKER_FLAGS_RELEASE_INIT -s)
endforeach()
