# qv_public_headers(TARGET NAMESPACE FILES…): the explicit list of a library's public headers. Inside the build they are
# reached under the same path as after installation (`NAMESPACE/File.h`), through links into the source tree.
function(qv_public_headers target namespace)
  set(root "${PROJECT_BINARY_DIR}/include")
  file(MAKE_DIRECTORY "${root}/${namespace}")
  foreach(header IN LISTS ARGN)
    get_filename_component(name "${header}" NAME)
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${root}/${namespace}/${name}" SYMBOLIC)
  endforeach()
  target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${root}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  install(FILES ${ARGN} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${namespace}")
endfunction()
