# The module's screens on a headless panel.

# What they share: the fixtures and the spy.
add_library(vesk_screen_test OBJECT
  ${CMAKE_CURRENT_SOURCE_DIR}/support/screen_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/support/spy.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/support/spy_functions.cpp)
target_include_directories(vesk_screen_test PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/support)
target_link_libraries(vesk_screen_test PUBLIC vesk_module_objects vesk_television vesk_port GTest::gmock PRIVATE vesk_warnings)
# The spy has functions of names that the television has functions for, too.
target_link_options(vesk_screen_test INTERFACE
  LINKER:--wrap=elm_object_focus_set LINKER:--wrap=elm_object_focus_allow_set LINKER:--wrap=evas_object_focus_set
  LINKER:--wrap=elm_object_style_set)

function(vesk_add_screen_test name)
  vesk_add_test(${name} LABEL screen LIBRARIES vesk_screen_test ${ARGN})
  target_sources(${name} PRIVATE $<TARGET_OBJECTS:vesk_screen_test>)
  # What the tests look at: theme, pictures, catalogues and profiles of the build tree.
  add_dependencies(${name} vesk_theme vesk_pictures vesk_catalogues vesk_profiles)
endfunction()

file(GLOB SCREEN_TESTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/screen/*_test.cpp)
set(WALK ${CMAKE_CURRENT_SOURCE_DIR}/screen/walk_test.cpp)
set(SCALE ${CMAKE_CURRENT_SOURCE_DIR}/screen/scale_test.cpp)
list(REMOVE_ITEM SCREEN_TESTS ${WALK} ${SCALE})
vesk_add_screen_test(screen_test SHARDS 12 SOURCES ${SCREEN_TESTS})
set_source_files_properties(${CMAKE_CURRENT_SOURCE_DIR}/screen/states_test.cpp PROPERTIES
  COMPILE_DEFINITIONS STATES_DOCUMENT="${PROJECT_SOURCE_DIR}/docs/states.md")

# Two parts of the walk look for leaks under the sanitizers, since that takes twice as long.
vesk_add_screen_test(screen_walk_test SHARDS 10 LEAK_SHARDS 2 SOURCES ${WALK})

# The toolkit starts once in a process, with one scale.
vesk_add_screen_test(screen_scale_test SOURCES ${SCALE})
