# Build settings shared by every target of the project. Targets link qg_build_options
# PRIVATE, so warnings and sanitizers apply per target and never leak to consumers.
add_library(qg_build_options INTERFACE)
target_compile_options(qg_build_options INTERFACE -Wall -Wextra -Wpedantic)
if(QG_WERROR)
    target_compile_options(qg_build_options INTERFACE -Werror)
endif()
if(QG_SANITIZE)
    target_compile_options(qg_build_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(qg_build_options INTERFACE -fsanitize=address,undefined)
endif()
if(QG_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "The fuzz targets need clang (CXX=clang++)")
    endif()
    target_compile_options(qg_build_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_link_options(qg_build_options INTERFACE -fsanitize=address,undefined)
endif()

# qg_target_defaults(target): the project's warnings and sanitizers for one target.
function(qg_target_defaults target)
    target_link_libraries(${target} PRIVATE qg_build_options)
endfunction()
