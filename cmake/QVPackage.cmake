# What lets other projects find the installed library: a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(QV_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/QVCardScan")
install(EXPORT QVCardScanTargets NAMESPACE QVCardScan:: DESTINATION "${QV_CMAKE_DIR}" COMPONENT dev)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/QVCardScanConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/QVCardScanConfig.cmake" INSTALL_DESTINATION "${QV_CMAKE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/QVCardScanConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/QVCardScanConfig.cmake" "${PROJECT_BINARY_DIR}/QVCardScanConfigVersion.cmake"
        DESTINATION "${QV_CMAKE_DIR}" COMPONENT dev)

# The libraries may lie deeper than in `lib`: `lib/<architecture>` below /usr.
file(RELATIVE_PATH QV_PREFIX_FROM_PC "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file("${PROJECT_SOURCE_DIR}/cmake/QVCardScan.pc.in" "${PROJECT_BINARY_DIR}/QVCardScan.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/QVCardScan.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT dev)
