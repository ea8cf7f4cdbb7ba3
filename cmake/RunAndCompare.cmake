# cmake -DPROGRAM=... -DEXPECTED=... -P RunAndCompare.cmake
# Runs a program and compares what it prints with a file, byte for byte.

execute_process(
    COMMAND ${PROGRAM}
    OUTPUT_VARIABLE output
    RESULT_VARIABLE status)
file(READ ${EXPECTED} expected)

if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with status ${status}; it printed:\n${output}")
endif()
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} printed:\n${output}\nexpected (${EXPECTED}):\n${expected}")
endif()
