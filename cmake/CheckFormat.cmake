# Fails when a C++ file of the project is not formatted with the project's .clang-format.
# Run as: cmake -DSOURCE_DIR=<repo> -DCLANG_FORMAT=<exe> -P CheckFormat.cmake
file(GLOB_RECURSE files
    ${SOURCE_DIR}/src/*.h ${SOURCE_DIR}/src/*.cpp
    ${SOURCE_DIR}/tests/*.h ${SOURCE_DIR}/tests/*.cpp
    ${SOURCE_DIR}/bench/*.h ${SOURCE_DIR}/bench/*.cpp
    ${SOURCE_DIR}/tools/*.h ${SOURCE_DIR}/tools/*.cpp
    ${SOURCE_DIR}/reference/*.h ${SOURCE_DIR}/reference/*.cpp
    ${SOURCE_DIR}/resources/*.h ${SOURCE_DIR}/resources/*.cpp)
# One clang-format process for all files: starting one per file is what made this slow.
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${files}
    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
if(NOT rc EQUAL 0)
    string(REGEX MATCHALL "[^\n]*: error: [^\n]*" errors "${out}")
    list(JOIN errors "\n  " lines)
    message(FATAL_ERROR "Not formatted (run 'make format'):\n  ${lines}")
endif()
list(LENGTH files count)
message(STATUS "${count} files formatted")
