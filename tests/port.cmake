# The desktop port without a window, and veskctl as separate processes.
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
find_package(nlohmann_json REQUIRED)

add_library(port_fixture STATIC ${PROJECT_SOURCE_DIR}/tests/unit/port_fixture.cpp)
target_include_directories(port_fixture PUBLIC ${PROJECT_SOURCE_DIR}/tests/unit)
target_compile_definitions(port_fixture PRIVATE VESKCTL="$<TARGET_FILE:veskctl>")
target_link_libraries(port_fixture PUBLIC vesk_port GTest::gmock PkgConfig::GLIB PkgConfig::SQLITE PRIVATE vesk_warnings)
add_dependencies(port_fixture veskctl)

vesk_add_test(port_test LABEL unit LIBRARIES port_fixture SOURCES
  ${PROJECT_SOURCE_DIR}/tests/unit/port_device_disk_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_device_files_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_device_logs_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_device_reports_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_devices_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_failures_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_gadget_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_log_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_paths_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_product_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_settings_files_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_settings_override_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_settings_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/unit/port_text_test.cpp)
target_link_libraries(port_test PRIVATE ${CMAKE_DL_LIBS})
add_library(leaving_module MODULE ${PROJECT_SOURCE_DIR}/tests/unit/leaving_module.cpp)
set_target_properties(leaving_module PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
target_link_libraries(leaving_module PRIVATE vesk_platform vesk_warnings)
target_compile_definitions(port_test PRIVATE LEAVING_MODULE="$<TARGET_FILE:leaving_module>")
add_dependencies(port_test leaving_module)

vesk_add_test(veskctl_test LABEL e2e LIBRARIES port_fixture nlohmann_json::nlohmann_json SOURCES
  ${PROJECT_SOURCE_DIR}/tests/e2e/veskctl_devices_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/e2e/veskctl_import_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/e2e/veskctl_test.cpp)
