# Our manifests name the processor of the 32-bit build, as that is the one that most hosts need. Where another is built
# for, resource scripts find copies first that name that one.
set(TOVAREX_COMPONENT_MANIFEST "${PROJECT_SOURCE_DIR}/src/front/win32/TovarEx.manifest")
if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 8)
    file(GLOB_RECURSE manifests CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/*.manifest"
        "${PROJECT_SOURCE_DIR}/host/*.manifest" "${PROJECT_SOURCE_DIR}/tests/win32/*.manifest")
    foreach(manifest ${manifests})
        file(READ "${manifest}" text)
        string(REPLACE "processorArchitecture=\"x86\"" "processorArchitecture=\"amd64\"" changed "${text}")
        if(NOT changed STREQUAL text)
            get_filename_component(name "${manifest}" NAME)
            file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/manifests/${name}" CONTENT "${changed}" @ONLY)
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${manifest}")
        endif()
    endforeach()
    include_directories(BEFORE "${CMAKE_BINARY_DIR}/manifests")
    set(TOVAREX_COMPONENT_MANIFEST "${CMAKE_BINARY_DIR}/manifests/TovarEx.manifest")
endif()
