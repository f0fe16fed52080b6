# Regenerates the samples into the build folder and compares each one byte
# for byte with the checked-in file.
file(MAKE_DIRECTORY ${OUTPUT})
execute_process(COMMAND ${GENERATOR} ${LIBRARY} ${OUTPUT} RESULT_VARIABLE _result)
if(NOT _result EQUAL 0)
    message(FATAL_ERROR "plaveno-mksamples failed: ${_result}")
endif()
foreach(_name Studio Flat House Sample)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT}/${_name}.pvp ${REFERENCE}/${_name}.pvp
        RESULT_VARIABLE _differs)
    if(NOT _differs EQUAL 0)
        message(FATAL_ERROR "${REFERENCE}/${_name}.pvp is out of date: run plaveno-mksamples ${LIBRARY} ${REFERENCE}")
    endif()
endforeach()
