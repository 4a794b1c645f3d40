# vesk_find_toolkit(name modules...): libraries of the toolkit as PkgConfig::name. Debian's files for them name folders
# that its packages do not have, which CMake refuses; those are passed over.
function(vesk_find_toolkit name)
  pkg_check_modules(${name} REQUIRED IMPORTED_TARGET GLOBAL ${ARGN})
  get_target_property(folders PkgConfig::${name} INTERFACE_INCLUDE_DIRECTORIES)
  foreach(folder IN LISTS folders)
    if(NOT EXISTS ${folder})
      list(REMOVE_ITEM folders ${folder})
    endif()
  endforeach()
  set_target_properties(PkgConfig::${name} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${folders}")
endfunction()
