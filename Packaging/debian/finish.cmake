# Runs over what was installed for the packages, before they are made: what Debian wants otherwise than an installation by
# hand. Libraries are found where the system has them, and pages are compressed.
file(GLOB binaries "${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/*" "${CPACK_TEMPORARY_DIRECTORY}/*/usr/lib/*.so.*")
foreach(binary IN LISTS binaries)
  if(NOT IS_SYMLINK "${binary}")
    file(RPATH_REMOVE FILE "${binary}")
  endif()
endforeach()
file(GLOB pages "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man*/*.[0-9]"
                "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*/changelog.Debian"
                "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*/changelog")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
