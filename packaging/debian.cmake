# Debian packages: `cpack` in the build folder writes them to packages/ there.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGE_CONTACT "Kolvane maintainers <maintainers@kolvane.example>")
# Each description below starts with its summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_STRIP_FILES ON)
# Into the prefix itself below a staging folder, so that what is made at installation sees the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

# One package for each component that has files.
get_cmake_property(CPACK_COMPONENTS_ALL COMPONENTS)
list(REMOVE_ITEM CPACK_COMPONENTS_ALL Unspecified)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME kolvane)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/triggers)
# What no library depends on: drawing of icons, Qt's German button texts, a font as wide as the requested one.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libqt6svg6, qt6-translations-l10n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-liberation2 | fonts-liberation, hicolor-icon-theme, qt6-wayland")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "command terminal for measurement amplifiers
Kolvane talks to measurement amplifiers and other instruments that speak a
line-oriented ASCII protocol: over TCP/IP, serial lines and RS485, GPIB, USB
and parallel ports. Commands are typed, collected in command lists, played
and logged; answers are shown as text or byte by byte. Command lists run
without a window as well. The user interface is German.

The package has the program, the component that other programs open the
terminal with, the port library, a simulated amplifier and the help.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME kolvane-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "kolvane (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "command terminal for instruments - development files
Kolvane talks to measurement amplifiers and other instruments that speak a
line-oriented ASCII protocol.

The package has what a C++ program needs to open the terminal on devices of
its own: headers, the CMake package Kolvane and the pkg-config module kolvane.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-kolvane)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
# The module is built for one minor version of Python.
math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "kolvane (= ${PROJECT_VERSION})"
    "python3 (>= ${Python_VERSION_MAJOR}.${Python_VERSION_MINOR})" "python3 (<< ${Python_VERSION_MAJOR}.${next_minor})")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-pyvisa)
list(JOIN CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS ", " CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "command terminal for instruments - Python binding
Kolvane talks to measurement amplifiers and other instruments that speak a
line-oriented ASCII protocol.

The package has the Python module kolvane, with which a Python program talks
to instruments, opens the terminal on devices of its own and runs command
lists without a window, and a backend of PyVISA.")

include(CPack)
