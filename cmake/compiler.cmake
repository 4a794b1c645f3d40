# What every target is compiled and linked with: warnings are errors, nothing is left undefined, and what protects a
# program against its own faults is switched on.

add_library(vesk_warnings INTERFACE)
target_compile_options(vesk_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wformat=2 -Wnon-virtual-dtor -Wold-style-cast -Werror)
target_link_options(vesk_warnings INTERFACE -Wl,--no-undefined -Wl,--as-needed)

add_compile_options(-fstack-protector-strong)
if(CMAKE_BUILD_TYPE MATCHES "Rel")
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2) # it needs an optimised build
endif()
add_link_options(-Wl,-z,relro -Wl,-z,now)

if(VESK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With the sanitizers' instructions in between, gcc takes the standard library's own objects for unset ones.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
  add_link_options(-fsanitize=address,undefined)
endif()
