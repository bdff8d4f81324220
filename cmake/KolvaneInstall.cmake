# Where things are installed.

# On Debian libraries are in their architecture's folder below every prefix, not only /usr.
if(NOT DEFINED CMAKE_INSTALL_LIBDIR AND CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Object code libraries")
endif()
include(GNUInstallDirs)

# The component's own folder: it finds the port library and the help files beside itself (docs/decisions/0007).
set(KOLVANE_INSTALL_COMPONENTDIR ${CMAKE_INSTALL_LIBDIR}/kolvane)
set(KOLVANE_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/Kolvane)
set(KOLVANE_INSTALL_PYTHONDIR lib/python3/dist-packages CACHE STRING "Python packages")
set(KOLVANE_INSTALL_ZSHDIR ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions CACHE STRING "Completions for zsh")

# One component for each package.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)

# kolvane_install_rpath(TARGET DIR): a program or library installed into DIR finds libkolvane.so with any prefix.
function(kolvane_install_rpath target dir)
  file(RELATIVE_PATH way /${dir} /${KOLVANE_INSTALL_COMPONENTDIR})
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${way}")
endfunction()
