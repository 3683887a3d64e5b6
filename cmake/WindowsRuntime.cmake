# What every Windows program and module of this tree needs.
add_compile_definitions(UNICODE _UNICODE NOMINMAX)
if(MSVC)
  return()
endif()
add_compile_definitions(WIN32_LEAN_AND_MEAN)

# The same bytes from the same sources, and the compiler's runtime beside it. That is shared: exceptions and error
# categories must mean the same in every DLL.
add_link_options(-Wl,--no-insert-timestamp)
# A false alarm of this compiler inside std::string.
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)

foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS ${path})
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where its ${library} is")
  endif()
  configure_file(${path} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library} COPYONLY)
  install(FILES ${path} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
