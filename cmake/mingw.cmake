# Windows by MinGW-w64 with its posix threads. Included by the tool chain file of each processor, which sets
# MINGW_TARGET (what the compiler's name begins with) and DEPS_TARGET (the folder of the third-party libraries).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${MINGW_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${MINGW_TARGET}-windres)

# Where the static third-party libraries lie.
set(TOVAREX_DEPS "${CMAKE_CURRENT_LIST_DIR}/../build/deps/${DEPS_TARGET}"
    CACHE PATH "third-party libraries for the target")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOVAREX_DEPS)
set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_TARGET} "${TOVAREX_DEPS}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
