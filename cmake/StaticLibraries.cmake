# quench_find_library(VARIABLE NAME): the library NAME, its archive when the runtime is linked in
# and Debian's -dev package ships one, else the shared one.
function(quench_find_library variable name)
    if(QUENCH_STATIC_RUNTIME)
        find_library(QUENCH_${name}_ARCHIVE NAMES lib${name}.a ${name} REQUIRED)
        set(${variable} ${QUENCH_${name}_ARCHIVE} PARENT_SCOPE)
    else()
        find_library(QUENCH_${name}_SHARED NAMES ${name} REQUIRED)
        set(${variable} ${QUENCH_${name}_SHARED} PARENT_SCOPE)
    endif()
endfunction()
