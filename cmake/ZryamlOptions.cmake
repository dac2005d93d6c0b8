# SPDX-License-Identifier: Apache-2.0
# Options of the build. Inside another project only the libraries are built, and nothing is installed.

include(GNUInstallDirs)

option(ZRYAML_SCHEMA "Build libzryaml_schema.so, which needs PCRE2" ${PROJECT_IS_TOP_LEVEL})
option(ZRYAML_CLI "Build the zryaml command" ${PROJECT_IS_TOP_LEVEL})
option(ZRYAML_EXAMPLES "Build the examples" ${PROJECT_IS_TOP_LEVEL})
option(ZRYAML_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(ZRYAML_INSTALL "Add the install rules" ${PROJECT_IS_TOP_LEVEL})
option(ZRYAML_BENCH "Build the benchmarks" OFF)
option(ZRYAML_FUZZ "Build the fuzz targets (clang only)" OFF)
option(ZRYAML_WERROR "Treat compiler warnings as errors" OFF)
set(ZRYAML_SANITIZE "" CACHE STRING "Sanitizers for every object, such as address,undefined")
set(ZRYAML_OUTER_VERSION "${PROJECT_VERSION}" CACHE STRING "Version text of the build, read as g_pcYAMLOuterVer")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()

set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()
