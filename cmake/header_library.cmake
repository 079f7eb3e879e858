# A library that is headers only, for another machine: the folder `name` of this machine's headers, and nothing else of them.
function(kova_header_library target name)
  find_path(${name}_HEADERS ${name} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH NO_DEFAULT_PATH REQUIRED)
  set(folder ${CMAKE_BINARY_DIR}/header_libraries/${name})
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${${name}_HEADERS}/${name} ${folder}/${name} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
