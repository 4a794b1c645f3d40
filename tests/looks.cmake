# What the screens look like: the checks on a dozen scenes, the pictures that are kept, and the checks themselves.

foreach(NAME scenes references checks rules gallery)
  vesk_add_test(looks_${NAME}_test LABEL looks SOURCES ${CMAKE_CURRENT_LIST_DIR}/looks/${NAME}_test.cpp
    LIBRARIES vesk_looks PkgConfig::GIO)
  target_compile_definitions(looks_${NAME}_test PRIVATE
    LOOKS_REFERENCES="${CMAKE_CURRENT_LIST_DIR}/looks/references" LOOKS_FINDINGS="${CMAKE_BINARY_DIR}/looks-findings"
    VESK_SHARE="${VESK_SHARE_DIR}" LINGUAS_FILE="${PROJECT_SOURCE_DIR}/po/LINGUAS")
endforeach()
add_dependencies(looks_gallery_test vesk-gallery)
