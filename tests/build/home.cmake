# The home of the build tree, and of installations: as they are laid down, moved, linked to, and installed again.
#
#     cmake -D BUILD=build/release -D WORK=... -D LIBDIR=lib -D DATADIR=share -D HOST=.../homeHost [-D COMMAND=...] -P ...

cmake_minimum_required(VERSION 3.25)

set(home ${DATADIR}/Brelwick/Tandrel/Morvane/2015.1.pr42)
foreach(name CONFIG_PATH SHARED_PATH SYSTEM_TRANSFORM_LOCATION)
    unset(ENV{MORVANE_OVERRIDE_${name}})
endforeach()
unset(ENV{DESTDIR})

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(JOIN " " command ${ARGN})
        message("${command}\n${output}")
        message(FATAL_ERROR "The command above ended with ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# A host that loads the library from a directory, as the dynamic linker gets it, finds the home below the prefix.
function(expect_home prefix libraryPath)
    run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${libraryPath} ${HOST})
    file(REAL_PATH ${prefix} prefix)
    set(expected "\
${prefix}/${home}/morvaneConfig.xml
${prefix}/${home}/transforms
graphicsMonitor 1.00 1.00 1.00
broadcastMonitor 1.00 1.00 1.00
defaultLook 0.95 1.00 1.09
defaultGamutMap 0.95 1.00 1.00
SceneToOutputBridge 0.46 0.49 0.58
OutputToSceneBridge 0.95 1.00 1.09
")
    if(NOT output STREQUAL expected)
        message("${output}instead of:\n${expected}")
        message(FATAL_ERROR "The host printed what stands above, with the library of ${libraryPath}")
    endif()
endfunction()

# The command of an installation reads each transform that is installed with it.
function(expect_command prefix)
    if(NOT COMMAND)
        return()
    endif()
    file(GLOB_RECURSE transforms ${prefix}/${home}/transforms/*.ctf)
    run(${prefix}/bin/morvane info ${transforms})
endfunction()

function(install_to prefix)
    run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix} --component library)
    set(output "${output}" PARENT_SCOPE)
endfunction()

# The content of a home without the locks that hosts leave there.
function(list_home directory result)
    file(GLOB_RECURSE files RELATIVE ${directory} ${directory}/*)
    list(FILTER files EXCLUDE REGEX "\\.lock$")
    list(SORT files)
    set(${result} "${files}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

expect_home(${BUILD} ${BUILD}/${LIBDIR})

set(prefix ${WORK}/prefix)
install_to(${prefix})
list_home(${BUILD}/${home} built)
list_home(${prefix}/${home} installed)
if(NOT built STREQUAL installed OR NOT "morvaneConfig.xml" IN_LIST installed)
    message(FATAL_ERROR "Built: ${built}\nInstalled: ${installed}")
endif()
foreach(file IN LISTS installed)
    run(${CMAKE_COMMAND} -E compare_files ${BUILD}/${home}/${file} ${prefix}/${home}/${file})
endforeach()
if(COMMAND)
    run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix} --component Unspecified)
endif()
expect_home(${prefix} ${prefix}/${LIBDIR})
expect_command(${prefix})

set(moved "${WORK}/another place")
file(RENAME ${prefix} "${moved}")
expect_home("${moved}" "${moved}/${LIBDIR}")
expect_command("${moved}")

# Of a link to the library, the place that it leads to counts.
file(MAKE_DIRECTORY ${WORK}/links)
file(GLOB libraries "${moved}/${LIBDIR}/libmorvane.so*")
foreach(library IN LISTS libraries)
    cmake_path(GET library FILENAME name)
    file(CREATE_LINK "${library}" ${WORK}/links/${name} SYMBOLIC)
endforeach()
expect_home("${moved}" ${WORK}/links)

# What the machine's users have set up survives a new installation; a config file that is gone comes back.
set(config "${moved}/${home}/morvaneConfig.xml")
file(READ "${config}" shipped)
file(WRITE "${config}" "<MorvaneConfig/>\n")
install_to("${moved}")
file(READ "${config}" content)
if(NOT content STREQUAL "<MorvaneConfig/>\n" OR NOT output MATCHES "Kept: [^\n]*/morvaneConfig.xml")
    message("${output}")
    message(FATAL_ERROR "The config file was not kept: ${content}")
endif()
file(REMOVE "${config}")
install_to("${moved}")
file(READ "${config}" content)
if(NOT content STREQUAL shipped)
    message(FATAL_ERROR "The config file did not come back: ${content}")
endif()

# For a package: below a directory that is not the root yet.
set(ENV{DESTDIR} ${WORK}/package)
install_to(/opt/morvane)
if(NOT EXISTS ${WORK}/package/opt/morvane/${home}/morvaneConfig.xml)
    message(FATAL_ERROR "${output}")
endif()
