# SPDX-License-Identifier: Apache-2.0
# Lets a library export what its public headers declare, name by name, and nothing else.

# Each declaration with the mark, such as ZRYAML_API, in a header below the folder names a symbol last before its
# argument list or its end. All get the given version; "" gives them none.
function(zryaml_export target mark version folder)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${folder}/*.h")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
    set(names)
    foreach(header IN LISTS headers)
        file(READ "${header}" text)
        string(REGEX MATCHALL "\n(extern )?${mark} [^(;]+" declarations "${text}")
        list(TRANSFORM declarations REPLACE ".*[^A-Za-z0-9_]" "")
        list(APPEND names ${declarations})
    endforeach()
    list(JOIN names "; " names)
    set(map "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
    file(CONFIGURE OUTPUT "${map}" CONTENT "${version} { global: ${names}; local: *; };\n")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
endfunction()
