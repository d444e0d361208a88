# SPDX-License-Identifier: MIT
# Settings that every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(KWI_CCACHE ccache)
if(KWI_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # It keeps what includes a precompiled header only where it is told that this is well. Paths
    # count from the project: a clone in another folder finds what an earlier one compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${KWI_CCACHE})
endif()

# What the compiler sees of a source's path when ccache counts it from the build folder.
file(RELATIVE_PATH upFromBuild ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})

add_library(kwi_settings INTERFACE)
target_compile_options(
    kwi_settings
    INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
              -Wnon-virtual-dtor -Woverloaded-virtual
              # Reports name sources by their place in the project.
              -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=${upFromBuild}=
              # GCC 12 sees overlapping copies in every "text" + std::string.
              $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
              # A fused a*b+c rounds once where the formulas round twice: results must not depend
              # on whether the processor has the instruction.
              -ffp-contract=off)
# Large sources take the compiler up to a fifth less time when it does not collect its garbage.
target_compile_options(kwi_settings
                       INTERFACE $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=1048576>)
if(KWI_WERROR)
    target_compile_options(kwi_settings INTERFACE -Werror)
endif()
target_compile_definitions(kwi_settings INTERFACE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
                                                  $<$<CONFIG:Debug>:KWI_CHECK_LOCK_ORDER>)
if(KWI_SANITIZE)
    # Line numbers are all that a sanitizer's report shows; more would double the build.
    target_compile_options(
        kwi_settings INTERFACE -fsanitize=${KWI_SANITIZE} -fno-sanitize-recover=all
                               -fno-omit-frame-pointer -g1)
    target_link_options(kwi_settings INTERFACE -fsanitize=${KWI_SANITIZE})
endif()
if(KWI_SANITIZE_RULES)
    # A target that only declares or shows says so by KWI_COMPUTES_NOTHING.
    target_compile_options(
        kwi_settings INTERFACE $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KWI_COMPUTES_NOTHING>>>:
                               -fsanitize=${KWI_SANITIZE_RULES} -fno-sanitize-recover=all>
                               # What leaves invalid points to the arithmetic of IEEE 754.
                               $<$<BOOL:$<TARGET_PROPERTY:KWI_DIVIDES_BY_ZERO>>:
                               -fno-sanitize=float-divide-by-zero>)
    target_link_options(kwi_settings INTERFACE -fsanitize=${KWI_SANITIZE_RULES})
endif()

# Headers from outside the project that nearly every source of a target includes: read once, they
# halve the time of a build from nothing. The project's own stay out, so that a change of one
# compiles again what includes it and no more. Sources include what they use all the same: Clang,
# for the fuzzers and scripts/tidy.sh, does without.
function(kwi_precompile target)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_precompile_headers(${target} PRIVATE ${ARGN})
        # So that ccache sees what the precompiled header was made of.
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()

# The headers of another target that is compiled with the same options.
function(kwi_reuse_precompiled target other)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_precompile_headers(${target} REUSE_FROM ${other})
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()

set(KWI_COMMON_HEADERS
    <QByteArray> <QString> <QStringList> <QVariant> <algorithm> <array> <cmath> <functional>
    <limits> <memory> <mutex> <optional> <string> <vector>)
