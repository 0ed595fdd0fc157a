# The installed package: headers in their room folders below include/laminate, so that they find each other by the same
# names as in the sources; the library; a CMake package and a pkg-config file. The command installs itself (tools/).
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/laminate)
foreach(room ${LAMINATE_ROOMS})
  if(TARGET laminate_${room})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/${room} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/laminate
      FILES_MATCHING PATTERN "*.h")
  endif()
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/src/laminate.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/laminate)
install(TARGETS laminate EXPORT laminateTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT laminateTargets NAMESPACE laminate:: DESTINATION ${config_dir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/laminateConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/laminateConfig.cmake INSTALL_DESTINATION ${config_dir})
# Below 1.0 a new minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/laminateConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/laminateConfig.cmake ${PROJECT_BINARY_DIR}/package/laminateConfigVersion.cmake
  DESTINATION ${config_dir})

# The prefix as seen from the pkg-config file, so that an installed tree can be moved; absolute folders stay as they are.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(LAMINATE_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" up "${up}")
  set(LAMINATE_PC_PREFIX "\${pcfiledir}/${up}")
endif()
foreach(dir LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
    set(LAMINATE_PC_${dir} "${CMAKE_INSTALL_${dir}}")
  else()
    set(LAMINATE_PC_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
  endif()
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/laminate.pc.in ${PROJECT_BINARY_DIR}/package/laminate.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/laminate.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
