# What is needed to build a host: headers, the CMake package Kolvane, the pkg-config module kolvane.

include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

install(EXPORT KolvaneTargets NAMESPACE Kolvane:: DESTINATION ${KOLVANE_INSTALL_CMAKEDIR})
configure_package_config_file(KolvaneConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/KolvaneConfig.cmake
  INSTALL_DESTINATION ${KOLVANE_INSTALL_CMAKEDIR} NO_SET_AND_CHECK_MACRO)
# Below 1.0 a new minor version may break hosts.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KolvaneConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KolvaneConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/KolvaneConfigVersion.cmake
        DESTINATION ${KOLVANE_INSTALL_CMAKEDIR})

# The prefix is known only at installation; the loader searches below /usr, for other prefixes a host needs a run path.
set(pc ${CMAKE_CURRENT_BINARY_DIR}/kolvane.pc)
foreach(variable CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR PROJECT_DESCRIPTION PROJECT_VERSION)
  string(APPEND pc_values "set(${variable} [[${${variable}}]])\n")
endforeach()
install(CODE "
  ${pc_values}
  set(RUNPATH \" -Wl,-rpath,'\\\${libdir}'\")
  if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
    set(RUNPATH)
  endif()
  configure_file([[${CMAKE_CURRENT_SOURCE_DIR}/kolvane.pc.in]] [[${pc}]] @ONLY)"
  COMPONENT development)
install(FILES ${pc} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# library_link(TO NAME COMPONENT): a link NAME to TO in the folder of libraries.
function(library_link to name component)
  set(link ${CMAKE_CURRENT_BINARY_DIR}/links/${name})
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/links)
  file(CREATE_LINK ${to} ${link} SYMBOLIC)
  install(FILES ${link} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component})
endfunction()
library_link(kolvane/libkolvane.so.${PROJECT_VERSION} libkolvane.so.${PROJECT_VERSION_MAJOR} runtime)
library_link(libkolvane.so.${PROJECT_VERSION_MAJOR} libkolvane.so development)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)
