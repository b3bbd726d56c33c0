# `cmake --install`: both libraries with their headers, the CMake package and the pkg-config files,
# and the program.
include(CMakePackageConfigHelpers)

install(TARGETS tally tally_rows EXPORT TallyTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# Include paths begin at include/tally, as they begin at src/ in the sources.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tally
        FILES_MATCHING PATTERN "*.h"
        PATTERN "host" EXCLUDE
        PATTERN "portable" EXCLUDE
        PATTERN "report_classes.h" EXCLUDE
        PATTERN "report_status_file.h" EXCLUDE)
if(TARGET tally_cli)
  set_target_properties(tally_cli PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS tally_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Tally)
install(EXPORT TallyTargets NAMESPACE Tally:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TallyConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/package/TallyConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/TallyConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/TallyConfig.cmake
              ${PROJECT_BINARY_DIR}/package/TallyConfigVersion.cmake
        DESTINATION ${package_folder})

# The folder is found from the file's own place, so that `cmake --install --prefix` may move it.
file(RELATIVE_PATH TALLY_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(TALLY_PC_LIBRARIES "")
if(NOT BUILD_SHARED_LIBS)
  set(TALLY_PC_LIBRARIES " -lsqlite3 -lxml2")
endif()
foreach(name tally tally-rows)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/package/${name}.pc
                 @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${name}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
