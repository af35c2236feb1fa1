# Compiler, linker and cache settings shared by every target.
add_library(OperatorStationBuild INTERFACE)
target_compile_options(OperatorStationBuild INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wno-unused-parameter)
target_include_directories(OperatorStationBuild INTERFACE
    $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>
    $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/generated>)

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
