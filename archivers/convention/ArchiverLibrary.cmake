# The functions that every archiver library exports, by what follows the prefix, with the ordinals that old callers bind
# by. "=1" alone is the function that is named like the prefix.
set(ARCHIVER_FUNCTIONS
    =1 GetVersion=2 GetCursorInterval=3 SetCursorInterval=4 GetBackGroundMode=5 SetBackGroundMode=6 GetCursorMode=7
    SetCursorMode=8 GetRunning=10 CheckArchive=11 ConfigDialog=12 GetFileCount=17 QueryFunctionList=18 OpenArchive=21
    CloseArchive=22 FindFirst=23 FindNext=24 GetArcFileName=31 GetArcFileSize=32 GetArcOriginalSize=33
    GetArcCompressedSize=34 GetArcRatio=35 GetArcDate=36 GetArcTime=37 GetArcOSType=38 IsSFXFile=39 GetFileName=40
    GetOriginalSize=41 GetCompressedSize=42 GetRatio=43 GetDate=44 GetTime=45 GetCRC=46 GetAttribute=47 GetOSType=48
    ExtractMem=49 CompressMem=50 GetMethod=61 GetWriteTime=62 SetOwnerWindow=90 ClearOwnerWindow=91
    GetCreateTime GetAccessTime GetWriteTimeEx GetCreateTimeEx GetAccessTimeEx GetOriginalSizeEx GetCompressedSizeEx
    GetArcFileSizeEx GetArcOriginalSizeEx GetArcCompressedSizeEx SetOwnerWindowEx KillOwnerWindowEx GetSubVersion
    SetUnicodeMode SetCommandPassword)

# archiver_library(NAME PREFIX prefix VERSION n.nn DESCRIPTION text SOURCES file... [OWN_INTERFACE]
#                  [FUNCTIONS name...] [LINKS library...])
#
# One archiver library, NAME.dll (NAME.so elsewhere): the exported functions under its prefix and a version resource.
# FUNCTIONS are those that it exports beyond the common ones; with OWN_INTERFACE it exports them alone.
function(archiver_library name)
    cmake_parse_arguments(arg "OWN_INTERFACE" "PREFIX;VERSION;DESCRIPTION" "SOURCES;FUNCTIONS;LINKS" ${ARGN})
    add_library(${name} MODULE ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE archiver_convention ${arg_LINKS})
    set_target_properties(${name} PROPERTIES PREFIX "")
    tovar_warnings(${name})
    tovar_module_entry(${name})
    if(NOT arg_OWN_INTERFACE)
        list(PREPEND arg_FUNCTIONS ${ARCHIVER_FUNCTIONS})
    endif()
    archiver_exports(${name} "${arg_PREFIX}" "${arg_FUNCTIONS}")
    if(WIN32)
        archiver_version_resource(${name} "${arg_VERSION}" "${arg_DESCRIPTION}")
    endif()
endfunction()

# Exports the functions and nothing else: in Windows by a module definition, which gives the names of stdcall functions
# without their decoration; elsewhere by a version script.
function(archiver_exports name prefix functions)
    foreach(function ${functions})
        if(function MATCHES "^([A-Za-z]*)=([0-9]+)$")
            string(APPEND definition "    ${prefix}${CMAKE_MATCH_1} @${CMAKE_MATCH_2}\n")
            string(APPEND symbols " ${prefix}${CMAKE_MATCH_1};")
        else()
            string(APPEND definition "    ${prefix}${function}\n")
            string(APPEND symbols " ${prefix}${function};")
        endif()
    endforeach()
    if(WIN32)
        set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}.def")
        file(CONFIGURE OUTPUT "${file}" CONTENT "LIBRARY \"${name}.dll\"\nEXPORTS\n${definition}" @ONLY)
        target_sources(${name} PRIVATE "${file}")
        target_link_options(${name} PRIVATE -Wl,--enable-stdcall-fixup)
    else()
        set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}.map")
        file(CONFIGURE OUTPUT "${file}" CONTENT "{ global:${symbols} local: *; };\n" @ONLY)
        target_link_options(${name} PRIVATE "-Wl,--version-script=${file}")
        set_target_properties(${name} PROPERTIES LINK_DEPENDS "${file}")
    endif()
endfunction()

# "5.40" gives the file version 5.40.0.0.
function(archiver_version_resource name version description)
    string(REPLACE "." "," commas "${version}.0.0")
    set(ARCHIVER_FILE "${name}.dll")
    set(ARCHIVER_NAME "${name}")
    set(ARCHIVER_VERSION "${version}.0.0")
    set(ARCHIVER_VERSION_NUMBERS "${commas}")
    set(ARCHIVER_DESCRIPTION "${description}")
    string(REPLACE "." "," ARCHIVER_PRODUCT_NUMBERS "${PROJECT_VERSION}.0")
    set(ARCHIVER_PRODUCT_VERSION "${PROJECT_VERSION}.0")
    configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/win32/version.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/${name}.rc" @ONLY)
    target_sources(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${name}.rc")
endfunction()
