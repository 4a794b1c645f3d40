# The module by itself: its functions on a fake platform without a window, and the shape of its sources and of the
# shared object.

add_library(fake_platform STATIC ${CMAKE_CURRENT_LIST_DIR}/unit/fake_platform.cpp)
target_include_directories(fake_platform PUBLIC ${PROJECT_SOURCE_DIR}/platform/include)
target_link_libraries(fake_platform PRIVATE GTest::gtest vesk_warnings)

file(GLOB STORE_TESTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/unit/store_*_test.cpp)
vesk_add_test(store_test SOURCES ${STORE_TESTS} LIBRARIES vesk_store_objects fake_platform LABEL unit)

file(GLOB MODULE_TESTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/unit/module_*_test.cpp)
vesk_add_test(module_test SOURCES ${MODULE_TESTS} LIBRARIES vesk_module_objects fake_platform LABEL unit)
target_link_options(module_test PRIVATE -Wl,--wrap=calloc)

add_subdirectory(build)
