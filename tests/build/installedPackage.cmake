# Installs the library below WORK and builds the examples against it, once as a CMake package and once with pkg-config.

cmake_minimum_required(VERSION 3.25)

set(prefix ${WORK}/prefix)
set(expectedHostOutput "\
  0  51 102 -> 0.000 0.400 0.800 1.000
153 204 255 -> 1.200 1.600 2.000 1.000
255   0  51 -> 2.000 0.000 0.400 1.000
")
set(expectedBrowserOutput "\
looks/
  night/
    a.CTF
  b.cdl
c d.ctf
")
set(expectedViewerOutput "\
+0:    0   0   0  117 117 117  255 186 136
+1:    0   0   0  160 160 160  255 255 186
-2:    0   0   0   62  62  62  136  99  72
")
set(expectedCacheOutputs
    "0 from the file\ntwo forms: yes, the second made once: yes\n1 to the file\n"
    "1 from the file\ntwo forms: yes, the second made once: yes\n1 to the file\n")

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(JOIN " " command ${ARGN})
        message("${command}\n${output}")
        message(FATAL_ERROR "The command above ended with ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(run_expecting expectedOutput)
    run(${ARGN})
    if(NOT output STREQUAL expectedOutput)
        message("${output}instead of:\n${expectedOutput}")
        message(FATAL_ERROR "${ARGN} printed what stands above")
    endif()
endfunction()

function(run_host)
    run_expecting("${expectedHostOutput}" ${ARGN})
    # Its failures: one line on the standard error stream and exit code 1.
    execute_process(COMMAND ${ARGN} missing.ctf
        OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE result)
    if(NOT result EQUAL 1 OR output OR NOT error STREQUAL
            "host: cannot make the transform: No file found: 'missing.ctf'\n")
        message("${output}${error}")
        message(FATAL_ERROR "The host ended with ${result} and printed what stands above")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix} --component library)

run(${CMAKE_COMMAND} -S ${EXAMPLES} -B ${WORK}/package -G ${GENERATOR}
    -D CMAKE_CXX_COMPILER=${CXX} -D CMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK}/package)
run_host(${WORK}/package/host)
run_expecting("${expectedViewerOutput}" ${WORK}/package/viewer)
foreach(file "c d.ctf" looks/b.cdl looks/notes.txt looks/night/a.CTF)
    file(WRITE "${WORK}/transforms/${file}" "")
endforeach()
run_expecting("${expectedBrowserOutput}" ${WORK}/package/browser ${WORK}/transforms)
foreach(expectedOutput IN LISTS expectedCacheOutputs)
    run_expecting("${expectedOutput}" ${WORK}/package/cache ${WORK}/cache.txt)
endforeach()

set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
run(${PKG_CONFIG} --cflags --libs morvane)
separate_arguments(flags UNIX_COMMAND "${output}")
# The public headers ask for no more than C++11.
run(${CXX} -std=c++11 -Wall -Wextra -Wpedantic -Wundef -Werror ${EXAMPLES}/host.cpp ${flags} -o ${WORK}/host)
run_host(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/${LIBDIR} ${WORK}/host)
