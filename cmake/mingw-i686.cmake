# 32-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(MINGW_TARGET i686-w64-mingw32)
set(DEPS_TARGET win32)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
