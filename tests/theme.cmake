# The theme as built, and the module's sources, against the contract between the two.

vesk_add_test(theme_contract_test LABEL theme SOURCES ${CMAKE_CURRENT_LIST_DIR}/theme/contract_test.cpp
  LIBRARIES vesk_television)
target_compile_definitions(theme_contract_test PRIVATE
  THEME_CONTRACT="${PROJECT_SOURCE_DIR}/theme/CONTRACT.md" THEME_SOURCES="${PROJECT_SOURCE_DIR}/theme/edc"
  MODULE_SOURCES="${PROJECT_SOURCE_DIR}/src/ug")
add_dependencies(theme_contract_test vesk_theme)
