# Regenerates the standard library into the build folder and compares it
# byte for byte with the checked-in file.
execute_process(COMMAND ${GENERATOR} ${OUTPUT} RESULT_VARIABLE _result)
if(NOT _result EQUAL 0)
    message(FATAL_ERROR "plaveno-mklibrary failed: ${_result}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${REFERENCE} RESULT_VARIABLE _differs)
if(NOT _differs EQUAL 0)
    message(FATAL_ERROR "${REFERENCE} is out of date: run plaveno-mklibrary ${REFERENCE}")
endif()
