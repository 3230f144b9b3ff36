# Toolchain: 32-bit ARM (ARMv7, hard float) with Debian's cross compiler, its libraries unpacked by
# tools/armhf-sysroot, its programs run by qemu-arm.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
cmake_path(SET CMAKE_SYSROOT NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../build/armhf-sysroot")
if(NOT EXISTS "${CMAKE_SYSROOT}/usr/lib")
    message(FATAL_ERROR "No ${CMAKE_SYSROOT}: run tools/armhf-sysroot")
endif()
# Notes of what compilers before version 7 did otherwise: no part of this comes from one.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

# What runs while building is the building machine's, everything else the terminal's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L "${CMAKE_SYSROOT}")
