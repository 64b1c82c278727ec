# What a host installs: the library, its headers, the program, and the ways to find them (find_package, pkg-config).
# Components: runtime (the shared library), dev (headers, link name or archive, package files), tool.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(RASTERLOOM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Rasterloom)

install(TARGETS rasterloom EXPORT RasterloomTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/Corvane DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev FILES_MATCHING PATTERN "*.h")
install(EXPORT RasterloomTargets NAMESPACE Corvane:: DESTINATION ${RASTERLOOM_PACKAGE_DIR} COMPONENT dev)

configure_package_config_file(cmake/RasterloomConfig.cmake.in ${PROJECT_BINARY_DIR}/RasterloomConfig.cmake
    INSTALL_DESTINATION ${RASTERLOOM_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/RasterloomConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/RasterloomConfig.cmake ${PROJECT_BINARY_DIR}/RasterloomConfigVersion.cmake
    cmake/FindLCMS2.cmake
    DESTINATION ${RASTERLOOM_PACKAGE_DIR} COMPONENT dev)

if(BUILD_SHARED_LIBS)
    set(RASTERLOOM_PC_PRIVATE "Libs.private: -pthread")
else()
    set(RASTERLOOM_PC_PRIVATE "Requires: ${RASTERLOOM_PC_REQUIRES}\nLibs.private: -pthread")
    set(RASTERLOOM_PC_CFLAGS " -DRASTERLOOM_STATIC")
endif()
# Relative to where the file stands, so that the folder can be moved and packages can have another prefix.
file(RELATIVE_PATH RASTERLOOM_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH RASTERLOOM_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/rasterloom.pc.in ${PROJECT_BINARY_DIR}/rasterloom.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/rasterloom.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

if(TARGET rasterloom-tool)
    install(TARGETS rasterloom-tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
    set_target_properties(rasterloom-tool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

# Debian packages: cpack -G DEB in the build folder.
set(CPACK_PACKAGE_NAME rasterloom)
set(CPACK_PACKAGE_VENDOR "The Rasterloom authors")
set(CPACK_PACKAGE_CONTACT "The Rasterloom authors <rasterloom@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_COMPONENTS_ALL runtime dev tool)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME librasterloom0)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME librasterloom-dev)
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME rasterloom)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
include(CPack)
