# BlueZ behind the registered-device service: its tables and its cache without a bus, the port and the programs with a
# mock of bluetoothd on a private bus.
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0)
find_package(nlohmann_json REQUIRED)

# The tables beside the module, whose pictures they lead to.
vesk_add_test(bluez_tables_test LABEL unit LIBRARIES vesk_module_objects fake_platform PkgConfig::GLIB SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_tables_test.cpp ${PROJECT_SOURCE_DIR}/platform/desktop/bluez_tables.cpp)
target_include_directories(bluez_tables_test PRIVATE ${PROJECT_SOURCE_DIR}/platform)
target_compile_definitions(bluez_tables_test PRIVATE DRAWINGS="${PROJECT_SOURCE_DIR}/pictures/devices")

vesk_add_test(bluez_cache_test LABEL unit LIBRARIES vesk_port PkgConfig::GLIB SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_cache_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_devices_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_messages.cpp)
target_include_directories(bluez_cache_test PRIVATE ${CMAKE_CURRENT_LIST_DIR}/unit)

add_library(bluez_mock STATIC ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_mock.cpp)
target_link_libraries(bluez_mock PUBLIC port_fixture PkgConfig::GIO PRIVATE vesk_warnings)

vesk_add_test(bluez_port_test LABEL unit LIBRARIES bluez_mock SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_failures_test.cpp ${CMAKE_CURRENT_LIST_DIR}/unit/bluez_port_test.cpp)

vesk_add_test(bluez_veskctl_test LABEL e2e LIBRARIES bluez_mock nlohmann_json::nlohmann_json SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/e2e/bluez_veskctl_test.cpp)

vesk_add_test(bluez_host_test LABEL e2e LIBRARIES bluez_mock host_fixture SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/e2e/bluez_host_test.cpp)
