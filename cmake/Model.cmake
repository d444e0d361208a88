# SPDX-License-Identifier: MIT
# Runs the model generator: enumerations and groups are data, their C++ is made from them.

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

set(KWI_GENERATED_DIR ${CMAKE_BINARY_DIR}/generated)
file(GLOB modelFiles CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/database/Enumerations/*.toml
     ${PROJECT_SOURCE_DIR}/src/*/*.toml ${PROJECT_SOURCE_DIR}/database/Enumerations/*.txt
     ${PROJECT_SOURCE_DIR}/src/*.txt)
file(GLOB generatorFiles CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/modelgen/*.py)
set(generatorCommand
    ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${Python3_EXECUTABLE}
    ${PROJECT_SOURCE_DIR}/tools/modelgen --enumerations
    ${PROJECT_SOURCE_DIR}/database/Enumerations --groups ${PROJECT_SOURCE_DIR}/src --out
    ${KWI_GENERATED_DIR})

# A changed model configures anew, and the generator runs then: a group that gets rules of its own
# leaves the generated headers, and only a build that starts afterwards sees who included it. Files
# keep their time stamps while their content is the same, so that one changed property recompiles
# only what shows it.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${modelFiles} ${generatorFiles})
execute_process(COMMAND ${generatorCommand} RESULT_VARIABLE generatorResult)
if(NOT generatorResult)
    execute_process(COMMAND ${generatorCommand} --list-outputs OUTPUT_VARIABLE generatedFiles
                    RESULT_VARIABLE generatorResult)
endif()
if(generatorResult)
    message(FATAL_ERROR "The model has mistakes (see above).")
endif()
string(REPLACE "\n" ";" generatedFiles "${generatedFiles}")
list(REMOVE_ITEM generatedFiles "")

set(KWI_GENERATED_ENUM_SOURCES ${generatedFiles})
list(FILTER KWI_GENERATED_ENUM_SOURCES INCLUDE REGEX "^${KWI_GENERATED_DIR}/database/.*\\.cpp$")
set(KWI_GENERATED_GROUP_SOURCES ${generatedFiles})
list(FILTER KWI_GENERATED_GROUP_SOURCES INCLUDE REGEX "^${KWI_GENERATED_DIR}/src/.*\\.cpp$")

# The settings reference as pages for a browser, and schemas, with what was observed of couplings.
file(GLOB couplingPages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/settings/couplings/*.md)
file(GLOB siteAssets CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/modelgen/site/*)
set(KWI_SITE_DIR ${CMAKE_BINARY_DIR}/site)
add_custom_command(
    OUTPUT ${KWI_SITE_DIR}.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${KWI_SITE_DIR}
    COMMAND ${generatorCommand} --out ${KWI_SITE_DIR} --site
            ${PROJECT_SOURCE_DIR}/docs/settings/couplings
    COMMAND ${CMAKE_COMMAND} -E touch ${KWI_SITE_DIR}.stamp
    DEPENDS ${modelFiles} ${generatorFiles} ${couplingPages} ${siteAssets}
    COMMENT "Settings reference for a browser" VERBATIM)
if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(kwi_site ALL DEPENDS ${KWI_SITE_DIR}.stamp)
endif()
