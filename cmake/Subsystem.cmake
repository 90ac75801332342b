# tovar_library(NAME [SOURCES portable...] [WIN32_SOURCES ...] [POSIX_SOURCES ...] [LINKS library...])
#
# One static library: its portable sources and, in their own folders, those of the system it is built for. LINKS names
# what it stands on; a library never links one that stands on it.
function(tovar_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;WIN32_SOURCES;POSIX_SOURCES;LINKS" ${ARGN})
    set(sources ${arg_SOURCES})
    if(WIN32)
        list(APPEND sources ${arg_WIN32_SOURCES})
    else()
        list(APPEND sources ${arg_POSIX_SOURCES})
    endif()
    if(sources)
        add_library(${name} STATIC ${sources})
        target_link_libraries(${name} PUBLIC ${arg_LINKS})
        target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}")
        tovar_warnings(${name})
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${arg_LINKS})
        target_include_directories(${name} INTERFACE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}")
    endif()
endfunction()

# tovar_track_resources(script.rc...)
#
# The resource compiler does not tell which files a script includes: without this a module would keep the dialogs that it
# was built with when the script of one changes.
file(GLOB TOVAREX_RESOURCE_PARTS CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/*/win32/*.rc"
    "${PROJECT_SOURCE_DIR}/src/*/win32/*.manifest" "${PROJECT_SOURCE_DIR}/src/*/win32/*_controls.h")
function(tovar_track_resources)
    foreach(script ${ARGN})
        set_property(SOURCE "${script}" APPEND PROPERTY OBJECT_DEPENDS "${TOVAREX_RESOURCE_PARTS}")
    endforeach()
endfunction()

# tovar_tests(NAME SOURCES file... LINKS library...)
#
# One test program over GoogleTest. The portable ones are built for every system; those that only make sense in Windows
# stand below tests/win32.
function(tovar_tests name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    set(scripts ${arg_SOURCES})
    list(FILTER scripts INCLUDE REGEX "\\.rc$")
    tovar_track_resources(${scripts})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} gtest_main)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    tovar_warnings(${name})
    add_dependencies(${name} test_data)
    if(TARGET test_headers)
        target_precompile_headers(${name} REUSE_FROM test_headers)
    endif()
    set_property(GLOBAL APPEND PROPERTY TOVAREX_TEST_PROGRAMS ${name})
endfunction()
