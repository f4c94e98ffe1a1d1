# qg_add_test(NAME name SOURCES file... [LIBS lib...] [LABELS label...])
# One GoogleTest executable; its tests are discovered when ctest runs, so a sanitizer
# build does not run every test binary at build time.
find_package(GTest REQUIRED)
include(GoogleTest)

function(qg_add_test)
    cmake_parse_arguments(ARG "" "NAME" "SOURCES;LIBS;LABELS" ${ARGN})
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    target_link_libraries(${ARG_NAME} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
    target_include_directories(${ARG_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    qg_target_defaults(${ARG_NAME})
    if(NOT ARG_LABELS)
        set(ARG_LABELS unit)
    endif()
    gtest_discover_tests(${ARG_NAME}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 300)
endfunction()
