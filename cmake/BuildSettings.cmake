# Compiler, linker and cache settings shared by every target.
include(GNUInstallDirs)

add_library(OperatorStationBuild INTERFACE)
set_target_properties(OperatorStationBuild PROPERTIES EXPORT_NAME Build)
target_compile_features(OperatorStationBuild INTERFACE cxx_std_17)
# Warnings are for this project's own code, not for hosts that link the libraries.
target_compile_options(OperatorStationBuild INTERFACE
    $<BUILD_INTERFACE:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wno-unused-parameter>)
target_include_directories(OperatorStationBuild INTERFACE
    $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>
    $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/generated>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/operatorstation>)

# Installed programs and libraries find each other wherever the prefix is moved to.
file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN $ORIGIN/${bin_to_lib})

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
    add_link_options(-fuse-ld=mold)
endif()

if(OPERATORSTATION_SANITIZE)
    add_compile_options(-fsanitize=${OPERATORSTATION_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${OPERATORSTATION_SANITIZE})
endif()
