# SPDX-License-Identifier: Apache-2.0
# The Debian packages, one for each component of the installed copy; script/package makes them.

# The Debian revision stands in the changelog's first line, "zryaml (1.0.0-1) ...".
file(STRINGS cmake/debian/changelog first LIMIT_COUNT 1)
if(NOT first MATCHES "^zryaml \\(([0-9.]+)-([^)]+)\\)" OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "cmake/debian/changelog does not begin with an entry for version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
# Modes do not depend on the umask of whoever builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE zryaml)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "zryaml maintainers <maintainers@zryaml.example>")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/yaml ${PROJECT_BINARY_DIR}/base ${PROJECT_BINARY_DIR}/schema)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Each description below has its own first line.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(about "The zryaml library loads a YAML 1.1 file once, resolves its aliases and merge
keys, and then answers by key path such as servers[1].port. Errors name file,
line, column and key; untrusted files are bounded in depth, size and copies.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzryaml1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The trigger updates the loader's cache. CPack would also add scripts that do so, unless it is given others: the two
# names are of no file, so the package has no script.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers postinst postrm)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "YAML configuration file library
${about}
.
This package holds the shared libraries.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzryaml-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# pkg-config asks for libyaml's development files because zryaml.pc names them in Requires.private.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzryaml1 (= ${version}), libyaml-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "YAML configuration file library (development files)
${about}
.
This package holds the headers for C and C++, the files for pkg-config and
CMake, the guide and the examples.")

if(TARGET zryaml_schema)
    list(APPEND CPACK_COMPONENTS_ALL schema schema_development)
    set(about "The library checks a document that libzryaml has loaded against a JSON Schema
(draft-07, in JSON or YAML) and tells every problem with its line, column and
key path. Patterns are matched within limits, and nothing is fetched.")
    set(CPACK_DEBIAN_SCHEMA_PACKAGE_NAME libzryaml-schema1)
    set(CPACK_DEBIAN_SCHEMA_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_SCHEMA_PACKAGE_DEPENDS "libzryaml1 (>= ${version})")
    set(CPACK_DEBIAN_SCHEMA_PACKAGE_CONTROL_EXTRA ${CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA})
    set(CPACK_COMPONENT_SCHEMA_DESCRIPTION "JSON Schema for YAML configuration files
${about}
.
This package holds the shared library.")
    set(CPACK_DEBIAN_SCHEMA_DEVELOPMENT_PACKAGE_NAME libzryaml-schema-dev)
    set(CPACK_DEBIAN_SCHEMA_DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_SCHEMA_DEVELOPMENT_PACKAGE_DEPENDS
        "libzryaml-schema1 (= ${version}), libzryaml-dev (= ${version}), libpcre2-dev")
    set(CPACK_COMPONENT_SCHEMA_DEVELOPMENT_DESCRIPTION "JSON Schema for YAML configuration files (development files)
${about}
.
This package holds the header and the files for pkg-config and CMake.")
endif()

if(TARGET zryaml_cli)
    list(APPEND CPACK_COMPONENTS_ALL command)
    set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME zryaml)
    set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "libzryaml1 (>= ${version}), libzryaml-schema1 (>= ${version})")
    set(CPACK_COMPONENT_COMMAND_DESCRIPTION "command to read and check YAML configuration files
The zryaml command reads values by key path, lists keys, tells where a key
stands in the file, converts the resolved document to JSON, and checks any
number of files with errors that an editor can jump to.")
endif()

# What Debian wants in each package; a full installation leaves it out.
zryaml_gzip(cmake/debian/changelog ${PROJECT_BINARY_DIR}/changelog.Debian.gz)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} mark)
    install(FILES ${PROJECT_BINARY_DIR}/changelog.Debian.gz cmake/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${mark}_PACKAGE_NAME}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
