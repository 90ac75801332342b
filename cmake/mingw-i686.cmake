# 32-bit Windows, with the posix threads of MinGW-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

# Where the static third-party libraries lie.
set(TOVAREX_DEPS "${CMAKE_CURRENT_LIST_DIR}/../build/deps/win32" CACHE PATH "third-party libraries for the target")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOVAREX_DEPS)
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32 "${TOVAREX_DEPS}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
