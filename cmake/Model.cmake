# SPDX-License-Identifier: MIT
# Runs the model generator: enumerations and groups are data, their C++ is made at build time.

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

set(KWI_GENERATED_DIR ${CMAKE_BINARY_DIR}/generated)
file(GLOB modelFiles CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/database/Enumerations/*.toml
     ${PROJECT_SOURCE_DIR}/src/Groups/*.toml)
file(GLOB generatorFiles CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/modelgen/*.py)
set(generatorCommand
    ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${Python3_EXECUTABLE}
    ${PROJECT_SOURCE_DIR}/tools/modelgen --enumerations
    ${PROJECT_SOURCE_DIR}/database/Enumerations --groups ${PROJECT_SOURCE_DIR}/src/Groups --out
    ${KWI_GENERATED_DIR})

# Adding a group adds files: the list is read anew whenever the model changes.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${modelFiles} ${generatorFiles})
execute_process(COMMAND ${generatorCommand} --list-outputs OUTPUT_VARIABLE generatedFiles
                RESULT_VARIABLE generatorResult)
if(generatorResult)
    message(FATAL_ERROR "The model has mistakes (see above).")
endif()
string(REPLACE "\n" ";" generatedFiles "${generatedFiles}")
list(REMOVE_ITEM generatedFiles "")

# Outputs keep their time stamps when their content is unchanged, so that one changed property
# recompiles only what shows it; the stamp is what the build compares with the model.
add_custom_command(
    OUTPUT ${KWI_GENERATED_DIR}/model.stamp
    BYPRODUCTS ${generatedFiles}
    COMMAND ${generatorCommand}
    COMMAND ${CMAKE_COMMAND} -E touch ${KWI_GENERATED_DIR}/model.stamp
    DEPENDS ${modelFiles} ${generatorFiles}
    COMMENT "Generating enumerations and groups from the model")
add_custom_target(kwi_model DEPENDS ${KWI_GENERATED_DIR}/model.stamp)

set(KWI_GENERATED_ENUM_SOURCES ${generatedFiles})
list(FILTER KWI_GENERATED_ENUM_SOURCES INCLUDE REGEX "^${KWI_GENERATED_DIR}/database/.*\\.cpp$")
set(KWI_GENERATED_GROUP_SOURCES ${generatedFiles})
list(FILTER KWI_GENERATED_GROUP_SOURCES INCLUDE REGEX "^${KWI_GENERATED_DIR}/src/.*\\.cpp$")
