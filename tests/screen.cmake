# The module's screens on a headless panel.

add_library(vesk_screen_test OBJECT ${CMAKE_CURRENT_SOURCE_DIR}/screen/screen_test.cpp)
target_include_directories(vesk_screen_test PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/screen)
target_link_libraries(vesk_screen_test PUBLIC vesk_module_objects vesk_television vesk_port GTest::gtest PRIVATE vesk_warnings)

file(GLOB SCREEN_TESTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/screen/*_test.cpp)
list(REMOVE_ITEM SCREEN_TESTS ${CMAKE_CURRENT_SOURCE_DIR}/screen/screen_test.cpp)
foreach(TEST_SOURCE IN LISTS SCREEN_TESTS)
  get_filename_component(TEST_NAME ${TEST_SOURCE} NAME_WE)
  set(SHARDS "")
  if(TEST_NAME STREQUAL "walk_test")
    set(SHARDS SHARDS 10)
  endif()
  vesk_add_test(screen_${TEST_NAME} LABEL screen ${SHARDS} SOURCES ${TEST_SOURCE} $<TARGET_OBJECTS:vesk_screen_test>
    LIBRARIES vesk_screen_test)
  # What the tests look at: theme, pictures, catalogues and profiles of the build tree.
  add_dependencies(screen_${TEST_NAME} vesk_theme vesk_pictures vesk_catalogues vesk_profiles)
endforeach()

target_compile_definitions(screen_states_test PRIVATE STATES_DOCUMENT="${PROJECT_SOURCE_DIR}/docs/states.md")

# It looks at calls that the host has functions of the same name for.
target_link_options(screen_focus_calls_test PRIVATE LINKER:--wrap=elm_object_focus_set
  LINKER:--wrap=elm_object_focus_allow_set)
