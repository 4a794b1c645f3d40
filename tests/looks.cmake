# What the screens look like: the checks on a dozen scenes, the pictures that are kept, and the checks themselves.

foreach(NAME scenes references checks)
  vesk_add_test(looks_${NAME}_test LABEL looks SOURCES ${CMAKE_CURRENT_LIST_DIR}/looks/${NAME}_test.cpp
    LIBRARIES vesk_looks)
  target_compile_definitions(looks_${NAME}_test PRIVATE
    LOOKS_REFERENCES="${CMAKE_CURRENT_LIST_DIR}/looks/references" LOOKS_FINDINGS="${CMAKE_BINARY_DIR}/looks-findings")
endforeach()
