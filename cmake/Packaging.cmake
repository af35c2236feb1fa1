# Install rules and the CMake package that outside hosts consume with find_package(OperatorStation).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OperatorStation)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/operatorstation)

# Before 1.0 every minor version may change the interface, so it is part of the name.
set_target_properties(Nodes Utils Widgets PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

install(TARGETS OperatorStationBuild Nodes Utils Widgets EXPORT OperatorStationTargets)

install(DIRECTORY src/nodes src/utils src/widgets ${CMAKE_BINARY_DIR}/generated/
        DESTINATION ${header_dir} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/OperatorStation)
install(DIRECTORY projects/ DESTINATION ${CMAKE_INSTALL_DATADIR}/operatorstation/projects)

configure_package_config_file(
    cmake/OperatorStationConfig.cmake.in ${CMAKE_BINARY_DIR}/package/OperatorStationConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(
    ${CMAKE_BINARY_DIR}/package/OperatorStationConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/OperatorStationConfig.cmake
              ${CMAKE_BINARY_DIR}/package/OperatorStationConfigVersion.cmake
              cmake/FindQwt.cmake
        DESTINATION ${package_dir})
install(EXPORT OperatorStationTargets NAMESPACE OperatorStation:: DESTINATION ${package_dir})
