# Installs the config file, given the one that ships as config, and the home. One that is there already holds what the
# machine's users have set up, and stays.

cmake_path(ABSOLUTE_PATH home BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
set(installed "$ENV{DESTDIR}${home}/morvaneConfig.xml")
if(EXISTS "${installed}")
    message(STATUS "Kept: ${installed}")
else()
    file(INSTALL DESTINATION "${home}" TYPE FILE FILES "${config}")
endif()
