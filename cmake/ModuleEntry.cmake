# tovar_module_entry(TARGET)
#
# Gives a library for Windows the entry that returns what the C++ run time in it took, once it is unloaded. Does nothing
# for other systems.
set(TOVAREX_MODULE_ENTRY "${CMAKE_CURRENT_LIST_DIR}/win32/module_entry.cpp")
function(tovar_module_entry target)
    if(NOT WIN32)
        return()
    endif()
    target_sources(${target} PRIVATE "${TOVAREX_MODULE_ENTRY}")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        target_link_options(${target} PRIVATE "-Wl,--entry,_moduleEntry@12")
    else()
        target_link_options(${target} PRIVATE "-Wl,--entry,moduleEntry")
    endif()
endfunction()
