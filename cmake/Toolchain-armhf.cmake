# SPDX-License-Identifier: MIT
# 32-bit ARM Linux with hardware floating point (ARMv7), against the libraries that
# scripts/sysroot-armhf.sh unpacks. Programs run under QEMU's user-mode emulation.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
# Without the notes on calls into code that GCC 6 or older has built: there is none.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

cmake_path(SET CMAKE_SYSROOT NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-armhf")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L ${CMAKE_SYSROOT})

# Compilers, generators and Qt's own tools run here, everything else is of the target.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr CACHE PATH "Qt of this machine")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake CACHE PATH "")
