# Where the system home lies, the directory of the config file and of the transforms that ship.
#
# A relative data root lies below the installation's prefix. The library finds it from where it lies itself, so an
# installation can be moved, and the build tree, which has the same layout, works without one. An absolute data root is
# one place of the machine, for the build tree too.

set(MORVANE_DATA_ROOT "${CMAKE_INSTALL_DATADIR}" CACHE STRING
    "Directory that stands for the machine's program data directory; a relative one is below the installation's prefix")

cmake_path(ABSOLUTE_PATH MORVANE_DATA_ROOT BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE OUTPUT_VARIABLE dataRoot)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE libraryDir)
if(IS_ABSOLUTE "${MORVANE_DATA_ROOT}" OR libraryDir MATCHES "^\\.\\.")
    set(libraryDir lib)
    set(dataFromLibrary "")
    set(installedDataRoot ${dataRoot})
    set(builtDataRoot ${dataRoot})
else()
    cmake_path(RELATIVE_PATH dataRoot BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR} OUTPUT_VARIABLE dataFromLibrary)
    set(installedDataRoot ${MORVANE_DATA_ROOT})
    set(builtDataRoot ${PROJECT_BINARY_DIR}/${MORVANE_DATA_ROOT})
endif()

set(MORVANE_LIBRARY_DIR ${PROJECT_BINARY_DIR}/${libraryDir}) # of the build tree
# What the library is told: the data root as seen from its own directory, empty for an absolute one; and the full path,
# which also serves when the library's directory is not to be found.
set(MORVANE_DATA_FROM_LIBRARY "${dataFromLibrary}")
set(MORVANE_FULL_DATA_ROOT ${dataRoot})
set(MORVANE_INSTALLED_HOME ${installedDataRoot}/Brelwick/Tandrel/Morvane/2015.1.pr42)
set(MORVANE_BUILT_HOME ${builtDataRoot}/Brelwick/Tandrel/Morvane/2015.1.pr42)
