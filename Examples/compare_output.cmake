# cmake -DPROGRAM=... -DEXPECTED=... -DOUTPUT=... -P compare_output.cmake: runs the program and fails unless it ends well
# and its output is the expected file, byte by byte.
execute_process(COMMAND "${PROGRAM}" OUTPUT_FILE "${OUTPUT}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files "${OUTPUT}" "${EXPECTED}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    file(READ "${OUTPUT}" actual)
    message(FATAL_ERROR "the output differs from ${EXPECTED}:\n${actual}")
endif()
