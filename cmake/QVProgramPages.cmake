# What the shells and `man` know of the programs. Completion asks the program's help, so that it needs no list of its own.
file(READ "${PROJECT_SOURCE_DIR}/Packaging/completion/rows.awk" rows)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/Packaging/completion/rows.awk")

# qv_program_pages(PROGRAM SECTION COMPONENT)
function(qv_program_pages program section component)
  set(folder "${PROJECT_BINARY_DIR}/completion")
  foreach(shell IN ITEMS bash zsh fish)
    configure_file("${PROJECT_SOURCE_DIR}/Packaging/completion/completion.${shell}.in" "${folder}/${program}.${shell}" @ONLY)
  endforeach()
  install(FILES "${PROJECT_SOURCE_DIR}/Packaging/man/${program}.${section}"
          DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}" COMPONENT ${component})
  install(FILES "${folder}/${program}.bash" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
          RENAME ${program} COMPONENT ${component})
  install(FILES "${folder}/${program}.zsh" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions"
          RENAME _${program} COMPONENT ${component})
  install(FILES "${folder}/${program}.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d"
          COMPONENT ${component})
endfunction()

if(QV_BUILD_PROGRAMS)
  qv_program_pages(qvcardscan 1 tools)
  qv_program_pages(qvcardrecod 8 server)
endif()
