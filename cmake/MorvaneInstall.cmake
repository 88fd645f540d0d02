# Installs the library, its headers, the CMake package and morvane.pc.

include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Morvane)

install(TARGETS morvane EXPORT MorvaneTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT library)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/morvane DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT library
        FILES_MATCHING PATTERN "*.h")
install(EXPORT MorvaneTargets NAMESPACE Morvane:: DESTINATION ${packageDir} COMPONENT library)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MorvaneConfig.cmake.in MorvaneConfig.cmake
    INSTALL_DESTINATION ${packageDir})
# Every release has a namespace of its own, so no other release can stand in for the one that a host asks for.
write_basic_package_version_file(MorvaneConfigVersion.cmake COMPATIBILITY ExactVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT library)

# The prefix is found from where morvane.pc lies, so that the installed tree can be moved.
set(pcDir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${pcDir} OUTPUT_VARIABLE pcPrefix)
set(pcPrefix "\${pcfiledir}/${pcPrefix}")
foreach(name LIBDIR INCLUDEDIR)
    set(pc_${name} "\${prefix}")
    cmake_path(APPEND pc_${name} ${CMAKE_INSTALL_${name}})
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/morvane.pc.in morvane.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/morvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT library)
