# Install rules and the CMake package that outside hosts consume with find_package(OperatorStation).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
