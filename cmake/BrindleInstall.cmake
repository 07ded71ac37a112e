# The installation: bin/ and configuration/ side by side, since programs look for ../configuration beside their own
# directory; the libraries; headers below include/brindle; a CMake package and a file for pkg-config. As long as no
# directory of it is absolute the whole may be moved.
include(CMakePackageConfigHelpers)

# Programs need the component Brindle_Runtime; to build on the libraries takes Brindle_Development as well.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME Brindle_Runtime)

# Programs and libraries find the libraries from where they stand themselves.
set_target_properties(brindle brindle-platform PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(brindle PROPERTIES EXPORT_NAME Brindle)
set_target_properties(brindle-platform PROPERTIES EXPORT_NAME Platform)
install(TARGETS brindle brindle-platform EXPORT BrindleTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" NAMELINK_COMPONENT Brindle_Development
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")

if(TARGET brindle-tool)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_BINDIR}")
        set(tool_rpath "${CMAKE_INSTALL_FULL_LIBDIR}")
    else()
        file(RELATIVE_PATH tool_rpath "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
        set(tool_rpath "$ORIGIN/${tool_rpath}")
    endif()
    set_target_properties(brindle-tool PROPERTIES INSTALL_RPATH "${tool_rpath}")
    install(TARGETS brindle-tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    install(FILES "${PROJECT_BINARY_DIR}/share/man/man1/brindle.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${PROJECT_BINARY_DIR}/share/bash-completion/completions/brindle"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
endif()

cmake_path(APPEND CMAKE_INSTALL_BINDIR "../configuration" OUTPUT_VARIABLE configuration_destination)
cmake_path(NORMAL_PATH configuration_destination)
get_directory_property(configuration_files DIRECTORY Configuration DEFINITION configuration_files)
# Users write into this file: one that stands there stays.
list(REMOVE_ITEM configuration_files VKEConfig.xml)
cmake_path(ABSOLUTE_PATH configuration_destination BASE_DIRECTORY "\${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE absolute)
install(CODE "
    if(NOT EXISTS \"\$ENV{DESTDIR}${absolute}/VKEConfig.xml\")
        file(INSTALL \"${PROJECT_SOURCE_DIR}/Configuration/VKEConfig.xml\" DESTINATION \"${absolute}\")
    endif()")
foreach(file IN LISTS configuration_files)
    cmake_path(GET file PARENT_PATH folder)
    install(FILES "${PROJECT_SOURCE_DIR}/Configuration/${file}" DESTINATION "${configuration_destination}/${folder}")
endforeach()

# Headers: all of Include/, and of Platform/ those that callers include.
set(header_destination "${CMAKE_INSTALL_INCLUDEDIR}/brindle")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Include/" DESTINATION "${header_destination}"
        COMPONENT Brindle_Development FILES_MATCHING PATTERN "*.h")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Platform/" DESTINATION "${header_destination}"
        COMPONENT Brindle_Development FILES_MATCHING
        PATTERN "*.h"
        PATTERN "OS" EXCLUDE
        PATTERN "Mortise/LogLevel.h" EXCLUDE
        PATTERN "Mortise/LogSink.h" EXCLUDE
        PATTERN "Mortise/SettingsFile.h" EXCLUDE
        PATTERN "Mortise/SettingsStore.h" EXCLUDE
        PATTERN "Mortise/TomlParser.h" EXCLUDE
        PATTERN "ZBLCFGAPI/ConfigurationService.h" EXCLUDE
        PATTERN "ZBLCore/I18NUtf8.h" EXCLUDE
        PATTERN "ZBLCore/ZBLExceptionMembers.h" EXCLUDE
        PATTERN "ZBLCore/ZBLMessageCatalogue.h" EXCLUDE
        PATTERN "ZBLCore/ZBLMessageLines.h" EXCLUDE
        PATTERN "ZBLCore/ZBLTextSubstitution.h" EXCLUDE
        PATTERN "ZBLIDOM/ZBLIDOM_Tree.h" EXCLUDE)

set(package_destination "${CMAKE_INSTALL_LIBDIR}/cmake/Brindle")
install(EXPORT BrindleTargets NAMESPACE Brindle:: DESTINATION "${package_destination}"
        COMPONENT Brindle_Development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/BrindleConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/BrindleConfig.cmake"
                              INSTALL_DESTINATION "${package_destination}")
# Before 1.0 a new minor version may change what callers see.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/BrindleConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/BrindleConfig.cmake" "${PROJECT_BINARY_DIR}/BrindleConfigVersion.cmake"
        DESTINATION "${package_destination}" COMPONENT Brindle_Development)

# What stands in ${prefix} follows the file when it is moved. An absolute library directory says nothing about where the
# rest lies, so the prefix is written out then.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pc_libdir)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pc_includedir)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH pc_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
    string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
# A blank would end the word.
foreach(path IN ITEMS pc_prefix pc_libdir pc_includedir)
    string(REPLACE " " "\\ " ${path} "${${path}}")
endforeach()
configure_file("${PROJECT_SOURCE_DIR}/cmake/brindle.pc.in" "${PROJECT_BINARY_DIR}/brindle.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/brindle.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
        COMPONENT Brindle_Development)
