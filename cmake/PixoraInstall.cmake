# Installs headers, both libraries, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(FILES include/pixora.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/pixora DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS pixoraopt pixoraopt_static EXPORT PixoraTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT PixoraTargets NAMESPACE Pixora:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Pixora)
configure_package_config_file(cmake/PixoraConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/PixoraConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Pixora)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/PixoraConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/PixoraConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/PixoraConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Pixora)
# The pkg-config file finds the prefix relative to its own folder, so an
# install with `cmake --install --prefix` elsewhere still works.
file(RELATIVE_PATH PIXORA_PC_PREFIX_FROM_PCDIR "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" PIXORA_PC_PREFIX_FROM_PCDIR "${PIXORA_PC_PREFIX_FROM_PCDIR}")
configure_file(cmake/pixora.pc.in ${CMAKE_CURRENT_BINARY_DIR}/pixora.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/pixora.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
