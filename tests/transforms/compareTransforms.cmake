# Makes the transforms again and compares them with the tracked ones: the same files, byte for byte.

file(REMOVE_RECURSE ${MADE})
file(MAKE_DIRECTORY ${MADE})
execute_process(COMMAND ${GENERATOR} ${MADE} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The generator failed: ${result}")
endif()

file(GLOB_RECURSE tracked RELATIVE ${TRACKED} ${TRACKED}/*.ctf ${TRACKED}/*.cdl ${TRACKED}/*.lut ${TRACKED}/*.3dl)
file(GLOB_RECURSE made RELATIVE ${MADE} ${MADE}/*)
list(SORT tracked)
list(SORT made)
if(NOT tracked STREQUAL made OR made STREQUAL "")
    message(FATAL_ERROR "Tracked: ${tracked}\nMade: ${made}")
endif()
foreach(file IN LISTS made)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${TRACKED}/${file} ${MADE}/${file}
                    RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${file} is not what the generator makes")
    endif()
endforeach()
