# vesk-host as its users run it: a separate process with the real shared object, and veskctl beside it.

add_library(host_fixture STATIC ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_fixture.cpp)
target_include_directories(host_fixture PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/e2e)
target_compile_definitions(host_fixture PRIVATE VESK_HOST="$<TARGET_FILE:vesk-host>")
target_link_libraries(host_fixture PUBLIC port_fixture PRIVATE vesk_warnings)
add_dependencies(host_fixture vesk-host)

# Modules that refuse in two ways.
foreach(REFUSAL IN ITEMS init create)
  add_library(refusing_${REFUSAL} MODULE ${CMAKE_CURRENT_SOURCE_DIR}/e2e/refusing_module.cpp)
  string(TOUPPER ${REFUSAL} WHAT)
  target_compile_definitions(refusing_${REFUSAL} PRIVATE REFUSES_${WHAT})
  set_target_properties(refusing_${REFUSAL} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(refusing_${REFUSAL} PRIVATE vesk_platform vesk_warnings)
endforeach()

add_library(stuck_module MODULE ${CMAKE_CURRENT_SOURCE_DIR}/e2e/stuck_module.cpp)
set_target_properties(stuck_module PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
target_link_libraries(stuck_module PRIVATE vesk_platform vesk_warnings)

pkg_check_modules(X11 REQUIRED IMPORTED_TARGET x11 xtst)
vesk_add_test(host_test LABEL e2e LIBRARIES host_fixture PkgConfig::X11 SOURCES
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_display_fixture.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_display_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_keys_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_life_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_notice_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_options_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_reader_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_speech_test.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/host_start_test.cpp)
target_compile_definitions(host_test PRIVATE
  REFUSING_INIT="$<TARGET_FILE:refusing_init>" REFUSING_CREATE="$<TARGET_FILE:refusing_create>"
  STUCK_MODULE="$<TARGET_FILE:stuck_module>"
  VESK_HOST="$<TARGET_FILE:vesk-host>" VESK_GALLERY="$<TARGET_FILE:vesk-gallery>" VESK_BENCH="$<TARGET_FILE:vesk-bench>")
add_dependencies(host_test refusing_init refusing_create stuck_module vesk-gallery vesk-bench)
