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

# Every linked binary carries the project's version in an ELF package note (owner "FDO",
# JSON with "name" and "version"), which the program reads where Windows would read a
# file's version resource. GNU ld writes it (binutils 2.39 and later). -Xlinker keeps the
# JSON in one argument: -Wl, and LINKER: would split it at its commas.
include(CheckLinkerFlag)
check_linker_flag(CXX "-Wl,--package-metadata={}" QG_LINKER_HAS_PACKAGE_METADATA)
if(NOT QG_LINKER_HAS_PACKAGE_METADATA)
    message(WARNING "The linker cannot write package notes (--package-metadata): the "
                    "binaries will have no version")
endif()

# qg_target_defaults(target): the project's warnings and sanitizers for one target, and the
# package note for an executable or a shared library.
function(qg_target_defaults target)
    target_link_libraries(${target} PRIVATE qg_build_options)
    get_target_property(type ${target} TYPE)
    if(QG_LINKER_HAS_PACKAGE_METADATA AND type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$")
        # The name is the output name without prefix and suffix ("QGPlugin" for
        # libQGPlugin.so); the single quotes keep the JSON's double quotes through SHELL:.
        target_link_options(${target} PRIVATE
            "SHELL:-Xlinker '--package-metadata={\"name\":\"$<TARGET_FILE_BASE_NAME:${target}>\",\"version\":\"${PROJECT_VERSION}\"}'")
    endif()
endfunction()
