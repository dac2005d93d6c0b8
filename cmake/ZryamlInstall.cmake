# SPDX-License-Identifier: Apache-2.0
# The installed copy. Every path in it is relative to the file that holds it, so the prefix may be moved.

include(CMakePackageConfigHelpers)

set(ZRYAML_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zryaml)
set(ZRYAML_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set_target_properties(zrbase zryaml PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS zryaml zrbase EXPORT zryamlTargets)
install(DIRECTORY base/include/ yaml/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN *.h PATTERN *.hpp)

if(TARGET zryaml_cli)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zryaml_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
    install(TARGETS zryaml_cli)
    install(FILES cli/zryaml.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL)
endif()

install(EXPORT zryamlTargets NAMESPACE zryaml:: DESTINATION ${ZRYAML_CONFIG_DIR})
configure_package_config_file(cmake/zryamlConfig.cmake.in ${PROJECT_BINARY_DIR}/zryamlConfig.cmake
    INSTALL_DESTINATION ${ZRYAML_CONFIG_DIR} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zryamlConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zryamlConfig.cmake ${PROJECT_BINARY_DIR}/zryamlConfigVersion.cmake
    DESTINATION ${ZRYAML_CONFIG_DIR})

cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
    OUTPUT_VARIABLE ZRYAML_PC_PREFIX)
configure_file(cmake/zryaml.pc.in ${PROJECT_BINARY_DIR}/zryaml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zryaml.pc DESTINATION ${ZRYAML_PC_DIR})
