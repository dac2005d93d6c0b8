# SPDX-License-Identifier: Apache-2.0
# Compiler and linker options, as interface targets that zryaml_apply_flags gives to each target of the project. None of
# them reaches a project that uses the libraries.

add_library(zryaml_warnings INTERFACE)
target_compile_options(zryaml_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wformat=2 -Wundef
    # g++ 12 takes the move in "text" + std::string for a copy onto itself (fixed in 13).
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
    $<$<BOOL:${ZRYAML_WERROR}>:-Werror>)

# __FILE__ is the path from the repository's root, wherever the build directory lies.
add_library(zryaml_paths INTERFACE)
target_compile_options(zryaml_paths INTERFACE "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")

add_library(zryaml_checks INTERFACE)
if(ZRYAML_SANITIZE)
    # A report ends the program, so no test passes with one. Variables on the stack start with a pattern, never with a
    # lucky zero, so that a missing NUL shows; g++ 12 then takes arguments of fmt for uninitialised.
    target_compile_options(zryaml_checks INTERFACE
        -fsanitize=${ZRYAML_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        -ftrivial-auto-var-init=pattern -Wno-uninitialized)
    target_link_options(zryaml_checks INTERFACE -fsanitize=${ZRYAML_SANITIZE})
else()
    # Fortified calls need an optimised build, and would hide calls from the sanitizers.
    target_compile_options(zryaml_checks INTERFACE
        -fstack-protector-strong
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
    # With clang the sanitizers' run-time is in the program only, so --no-undefined works only without them.
    target_link_options(zryaml_checks INTERFACE
        $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:LINKER:--no-undefined>)
endif()
target_link_options(zryaml_checks INTERFACE LINKER:--as-needed LINKER:-z,relro LINKER:-z,now)

function(zryaml_apply_flags target)
    target_link_libraries(${target} PRIVATE
        $<BUILD_INTERFACE:zryaml_warnings> $<BUILD_INTERFACE:zryaml_paths> $<BUILD_INTERFACE:zryaml_checks>)
endfunction()
