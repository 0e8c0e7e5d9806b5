# SPDX-License-Identifier: MIT

# What lets other projects find the installed library: by `find_package(quxml)` and by `pkg-config quxml`. No file names the
# folder it is installed in, so the installed tree can be moved.
include(CMakePackageConfigHelpers)

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quxml)
configure_file(cmake/quxmlConfig.cmake.in quxmlConfig.cmake @ONLY)
write_basic_package_version_file(quxmlConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quxmlConfig.cmake ${PROJECT_BINARY_DIR}/quxmlConfigVersion.cmake
  DESTINATION ${config_folder})
install(EXPORT quxmlTargets NAMESPACE quxml:: DESTINATION ${config_folder})

file(RELATIVE_PATH include_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(pc_files quxml)
if(QUXML_EXTRAS)
  list(APPEND pc_files quxml-extras)
endif()
foreach(package IN LISTS pc_files)
  configure_file(cmake/${package}.pc.in ${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# What shows trees in gdb: for everybody to `source`, and where gdb, if it is installed in the same folder, looks for what
# belongs to the shared library. The name of that folder is known when the files are installed.
install(FILES tools/gdb/quxml_gdb.py DESTINATION ${CMAKE_INSTALL_DATADIR}/quxml)
set(library_folder ${CMAKE_INSTALL_LIBDIR})
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(library_folder "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(BUILD_SHARED_LIBS)
  install(FILES tools/gdb/quxml_gdb.py
    DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load/${library_folder}" RENAME libquxml.so.${PROJECT_VERSION}-gdb.py)
endif()

install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Last, since it lists the checksums of the files as they are installed, stripped or not.
include(cmake/sbom.cmake)
install(CODE "
  file(GLOB files \"\$ENV{DESTDIR}${library_folder}/libquxml*.a\"
    \"\$ENV{DESTDIR}${library_folder}/libquxml.so.${PROJECT_VERSION}\"
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/quxml\")
  set(output \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DOCDIR}/quxml.spdx.json\")
  message(STATUS \"Installing: \${output}\")
  include(\"${PROJECT_BINARY_DIR}/write_sbom.cmake\")")
