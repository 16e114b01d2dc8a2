# Debian packages, one per part of what is installed: `cpack -G DEB` in a build folder of release makes them, and
# Packaging/build-packages does so from nothing. They are made of what is built; nothing is compiled for them.
set(QV_LIBRARY_PACKAGE "libqvcardscan${PROJECT_VERSION_MAJOR}")
set(QV_DEBIAN "${PROJECT_SOURCE_DIR}/Packaging/debian")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qvcardscan)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "QVCardScan maintainers <maintainers@qvcardscan.invalid>")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_VERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Absolute destinations, of which /etc is one, go below the package's own root.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${QV_DEBIAN}/finish.cmake")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)

# What a package says of itself in its folder under share/doc.
configure_file("${QV_DEBIAN}/changelog.in" "${PROJECT_BINARY_DIR}/debian/changelog.Debian" @ONLY)

# qv_debian_package(COMPONENT NAME SECTION SUMMARY TEXT): one package. Its libraries' packages are found out by looking.
macro(qv_debian_package component name section summary text)
  string(TOUPPER "${component}" upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
  list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
  install(FILES "${PROJECT_BINARY_DIR}/debian/changelog.Debian" "${QV_DEBIAN}/copyright"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" RENAME changelog
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

# qv_debian_pages(COMPONENT NAME PAGE…): pages for whoever installs that package.
macro(qv_debian_pages component name)
  set(pages ${ARGN})
  list(TRANSFORM pages PREPEND "${PROJECT_SOURCE_DIR}/Documentation/")
  install(FILES ${pages} DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

# qv_debian_library(COMPONENT NAME SUMMARY TEXT): one of libraries.
macro(qv_debian_library component name summary text)
  string(TOUPPER "${component}" upper)
  qv_debian_package(${component} ${name} libs "${summary}" "${text}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA "${QV_DEBIAN}/library/triggers")
  list(APPEND CPACK_COMPONENT_DEV_DEPENDS ${component})
  install(FILES "${QV_DEBIAN}/library/${name}.lintian" DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
          RENAME ${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

set(CPACK_COMPONENTS_ALL)
qv_debian_library(library ${QV_LIBRARY_PACKAGE} "business cards to contacts and notes: library"
  "Photographs of business cards become contacts and contact notes. A program\n\
that loads this library hands it photographs; it has them read by a\n\
card-recognition server, repairs and merges what was read, and writes the note.")
# Loaded when the first HEIC picture comes, where it is there.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS libheif1)
if(QV_BUILD_GLIB_ADAPTER)
  qv_debian_library(QVGLibAdapter libqvcardscan-glib${PROJECT_VERSION_MAJOR} "business cards to contacts and notes: GLib"
    "Runs the library's work for the main thread in a GLib main loop.")
  set(CPACK_COMPONENT_QVGLIBADAPTER_DEPENDS library)
endif()
if(QV_BUILD_QT_ADAPTER)
  qv_debian_library(QVQtAdapter libqvcardscan-qt${PROJECT_VERSION_MAJOR} "business cards to contacts and notes: Qt"
    "Runs the library's work for the main thread in a Qt 6 event loop.")
  set(CPACK_COMPONENT_QVQTADAPTER_DEPENDS library)
endif()
qv_debian_package(dev libqvcardscan-dev libdevel "business cards to contacts and notes: headers"
  "What a program that loads the library is built with: headers, and files for\n\
CMake and pkg-config, a guide and examples.")
qv_debian_pages(dev libqvcardscan-dev host-guide.md)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Examples/" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/libqvcardscan-dev/examples"
        COMPONENT dev EXCLUDE_FROM_ALL)
if(QV_BUILD_PROGRAMS)
  qv_debian_package(tools qvcardscan utils "read business cards at the command line"
    "Photographs of business cards become contacts and contact notes: offline, on\n\
this machine. Keeps contacts in an address book, as a folder of vCards or on a\n\
CardDAV server.")
  set(CPACK_COMPONENT_TOOLS_DEPENDS library)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "qvcardrecod (= ${CPACK_DEBIAN_VERSION}), ca-certificates")
  qv_debian_package(server qvcardrecod net "card-recognition server"
    "Takes photographs of business cards by HTTP and answers with what they say.\n\
The command line starts it for itself; systemd runs it for others, when it is\n\
told to.")
  qv_debian_pages(server qvcardrecod operating-the-server.md server-protocol.md)
  set(CPACK_DEBIAN_SERVER_PACKAGE_DEPENDS "tesseract-ocr-eng, systemd | systemd-sysusers")
  set(CPACK_DEBIAN_SERVER_PACKAGE_RECOMMENDS
      "tesseract-ocr-deu, tesseract-ocr-fra, tesseract-ocr-ita, tesseract-ocr-nld, tesseract-ocr-por, tesseract-ocr-spa")
  set(CPACK_DEBIAN_SERVER_PACKAGE_SUGGESTS "nginx, prometheus")
  set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA
      "${QV_DEBIAN}/server/postinst;${QV_DEBIAN}/server/prerm;${QV_DEBIAN}/server/postrm;${QV_DEBIAN}/server/conffiles")
endif()

if(QV_BUILD_PROGRAMS)
  # Nothing of this belongs into another prefix: it names /usr/bin and /etc.
  set(server_only COMPONENT server EXCLUDE_FROM_ALL)
  install(FILES "${PROJECT_SOURCE_DIR}/Packaging/systemd/qvcardrecod.service"
                "${PROJECT_SOURCE_DIR}/Packaging/systemd/qvcardrecod@.service"
          DESTINATION lib/systemd/system ${server_only})
  install(FILES "${QV_DEBIAN}/qvcardrecod.sysusers" DESTINATION lib/sysusers.d RENAME qvcardrecod.conf ${server_only})
  install(FILES "${QV_DEBIAN}/qvcardrecod.default" DESTINATION /etc/default RENAME qvcardrecod ${server_only})
  install(FILES "${PROJECT_SOURCE_DIR}/Packaging/nginx/qvcardrecod.conf"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/qvcardrecod/examples/nginx" ${server_only})
endif()

include(CPack)
