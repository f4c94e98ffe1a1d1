# Regenerates the English language file and fails when it differs from the committed one.
# Run as: cmake -DTOOL=<resource-to-lang> -DHEADER=<resource.h> -DCOMMITTED=<English.ini>
#               -DSENTENCES=<ErrorSentences.txt> -DOUTPUT=<file in the build folder>
#               -P CompareEnglishFile.cmake
execute_process(COMMAND ${TOOL} --append=${SENTENCES} ${HEADER} ${OUTPUT} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "resource-to-lang failed with ${rc}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${COMMITTED}
    RESULT_VARIABLE differs)
if(NOT differs EQUAL 0)
    message(FATAL_ERROR "${COMMITTED} is out of date with the string table: "
                        "build the target update-language-file-english and commit the result")
endif()
message(STATUS "English.ini matches the string table")
