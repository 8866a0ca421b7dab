# Builds Tiler for 64-bit Windows on Debian, with its cross compiler and a Qt 5 built for Windows:
#   cmake -B build-windows -G Ninja --toolchain cmake/WindowsCross.cmake -DTILER_WINDOWS_QT=<folder>
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# The folder with Qt's bin, include, lib and plugins.
set(TILER_WINDOWS_QT "" CACHE PATH "A Qt 5 built for Windows")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TILER_WINDOWS_QT)
set(CMAKE_PREFIX_PATH "${TILER_WINDOWS_QT}")
set(CMAKE_FIND_ROOT_PATH "${TILER_WINDOWS_QT}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What compiles the translations runs here.
file(GLOB Qt5LinguistTools_DIR /usr/lib/*/cmake/Qt5LinguistTools)
