# The message catalogues: each by itself, all together, the check itself, and the look-up in what was built.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(catalogues ${PROJECT_SOURCE_DIR}/tools/catalogues.py)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/po/LINGUAS)
file(STRINGS ${PROJECT_SOURCE_DIR}/po/LINGUAS locales REGEX "^[^#]")

set(tests catalogue.together catalogue.table catalogue.check_finds)
add_test(NAME catalogue.together COMMAND ${catalogues} check --together)
add_test(NAME catalogue.table COMMAND ${catalogues} table --check)
add_test(NAME catalogue.check_finds
  COMMAND ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/tests/unit/catalogue_check_test.py)
foreach(locale IN LISTS locales)
  add_test(NAME catalogue.${locale} COMMAND ${catalogues} check ${locale})
  list(APPEND tests catalogue.${locale})
endforeach()
set_tests_properties(${tests} PROPERTIES LABELS unit ${VESK_NO_SKIPPED_TEST})

vesk_add_test(catalogue_lookup_test SOURCES ${PROJECT_SOURCE_DIR}/tests/unit/catalogue_lookup_test.cpp LABEL unit)
target_compile_definitions(catalogue_lookup_test PRIVATE
  LOCALE_DIR="${VESK_SHARE_DIR}/locale" LINGUAS_FILE="${PROJECT_SOURCE_DIR}/po/LINGUAS")
add_dependencies(catalogue_lookup_test vesk_catalogues)
