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
  install(FILES ${ARGN} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${namespace}" COMPONENT dev)
endfunction()

# qv_install_library(TARGET COMPONENT): the library itself belongs to that part of what is installed, and what is needed to
# link against it to `dev`. Parts are what becomes one Debian package each; see QVDebian.cmake.
function(qv_install_library target component)
  install(TARGETS ${target} EXPORT QVCardScanTargets
          LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component} NAMELINK_COMPONENT dev
          ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
endfunction()
