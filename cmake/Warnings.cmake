# Warnings of our own code; third-party code is built elsewhere.
function(tovar_warnings target)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror>
        $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Werror>)
endfunction()
