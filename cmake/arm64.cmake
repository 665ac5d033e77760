# For Debian on arm64, by Debian's cross compiler; scripts/cross_arm64.sh has the root in which it works.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(PKG_CONFIG_EXECUTABLE aarch64-linux-gnu-pkg-config)
# What the build runs of its own.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static)
