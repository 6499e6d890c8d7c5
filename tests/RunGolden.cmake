# Runs vantrel-calc with ARGS (a ;-list) on INPUT and compares its output with EXPECTED and its
# exit status with STATUS.
execute_process(COMMAND ${CLI} ${ARGS}
                INPUT_FILE ${INPUT}
                OUTPUT_VARIABLE output
                RESULT_VARIABLE status)
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
    file(WRITE ${ACTUAL} "${output}")
    message(FATAL_ERROR "output differs from ${EXPECTED}; see ${ACTUAL}\n"
                        "diff ${EXPECTED} ${ACTUAL}")
endif()
if(NOT status EQUAL STATUS)
    message(FATAL_ERROR "exit status ${status}, expected ${STATUS}")
endif()
