# SPDX-License-Identifier: Apache-2.0
# The installed copy, in components: runtime (the libraries), development and command; schema and schema_development for
# the library that knows PCRE2. Every path in it is relative to the file that holds it, so the prefix may be moved; folders that are given as absolute paths stay so.

include(CMakePackageConfigHelpers)

set(ZRYAML_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zryaml)

# Libraries and what is needed to build against them.
set_target_properties(zrbase zryaml PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS zryaml zrbase zryaml_cxx EXPORT zryamlTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
install(DIRECTORY base/include/ yaml/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN *.h PATTERN *.hpp)

install(EXPORT zryamlTargets NAMESPACE zryaml:: DESTINATION ${ZRYAML_CONFIG_DIR} COMPONENT development)
configure_package_config_file(cmake/zryamlConfig.cmake.in ${PROJECT_BINARY_DIR}/zryamlConfig.cmake
    INSTALL_DESTINATION ${ZRYAML_CONFIG_DIR} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zryamlConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zryamlConfig.cmake ${PROJECT_BINARY_DIR}/zryamlConfigVersion.cmake
    DESTINATION ${ZRYAML_CONFIG_DIR} COMPONENT development)

set(ZRYAML_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
        OUTPUT_VARIABLE ZRYAML_PC_PREFIX)
    string(PREPEND ZRYAML_PC_PREFIX "\${pcfiledir}/")
endif()
foreach(folder IN ITEMS LIBDIR INCLUDEDIR)
    set(ZRYAML_PC_${folder} "\${prefix}")
    cmake_path(APPEND ZRYAML_PC_${folder} "${CMAKE_INSTALL_${folder}}") # an absolute path replaces what is there
endforeach()
configure_file(cmake/zryaml.pc.in ${PROJECT_BINARY_DIR}/zryaml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zryaml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET zryaml_schema)
    set_target_properties(zryaml_schema PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS zryaml_schema EXPORT zryamlSchemaTargets
        LIBRARY COMPONENT schema NAMELINK_COMPONENT schema_development)
    install(DIRECTORY schema/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT schema_development
        FILES_MATCHING PATTERN *.h PATTERN *.hpp)
    install(EXPORT zryamlSchemaTargets NAMESPACE zryaml:: DESTINATION ${ZRYAML_CONFIG_DIR} COMPONENT schema_development)
    configure_file(cmake/zryaml_schema.pc.in ${PROJECT_BINARY_DIR}/zryaml_schema.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/zryaml_schema.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT schema_development)
endif()

file(GLOB guides CONFIGURE_DEPENDS docs/*.md)
install(FILES README.md ${guides} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
    FILES_MATCHING PATTERN *.c PATTERN *.cpp PATTERN *.yaml PATTERN *.json)

# Compresses a file when the build is configured, and again when it has changed.
find_program(ZRYAML_GZIP gzip REQUIRED)
function(zryaml_gzip source target)
    execute_process(COMMAND ${ZRYAML_GZIP} -9nc ${source} OUTPUT_FILE ${target}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
endfunction()

if(TARGET zryaml_cli)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zryaml_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
    install(TARGETS zryaml_cli RUNTIME COMPONENT command)
    zryaml_gzip(cli/zryaml.1 ${PROJECT_BINARY_DIR}/zryaml.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/zryaml.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
    install(FILES cli/completion/zryaml.bash RENAME zryaml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT command)
endif()
