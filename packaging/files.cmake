# The files of the program: for the component, for the desktop, for shells, for the device manager.

install(FILES ${KOLVANE_COMPONENT_FILES} DESTINATION ${KOLVANE_INSTALL_COMPONENTDIR})
install(FILES ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/Terminal.chm DESTINATION ${KOLVANE_INSTALL_COMPONENTDIR})

install(FILES kolvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES kolvane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
configure_file(org.kolvane.Kolvane.metainfo.xml.in org.kolvane.Kolvane.metainfo.xml @ONLY)
configure_file(changelog.in changelog @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/org.kolvane.Kolvane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PROJECT_SOURCE_DIR}/src/window/icons/kolvane.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES 70-kolvane.rules DESTINATION lib/udev/rules.d)

install(FILES completions/kolvane.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kolvane)
install(FILES completions/_kolvane DESTINATION ${KOLVANE_INSTALL_ZSHDIR})
install(FILES completions/kolvane.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

# install_gzipped(FILE DIR NAME COMPONENT): compressed as distributions require, without a stored name and time.
function(install_gzipped file dir name component)
  set(copy ${CMAKE_CURRENT_BINARY_DIR}/gzipped/${component}/${name})
  cmake_path(GET copy PARENT_PATH folder)
  add_custom_command(
    OUTPUT ${copy}.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy}
    COMMAND gzip -9nf ${copy}
    DEPENDS ${file})
  set_property(DIRECTORY APPEND PROPERTY KOLVANE_GZIPPED ${copy}.gz)
  install(FILES ${copy}.gz DESTINATION ${dir} COMPONENT ${component})
endfunction()

kolvane_glob(manual_pages ${PROJECT_SOURCE_DIR}/docs/man)
foreach(page IN LISTS manual_pages)
  cmake_path(GET page FILENAME name)
  install_gzipped(${page} ${CMAKE_INSTALL_MANDIR}/man1 ${name} runtime)
endforeach()

foreach(pair runtime:kolvane development:kolvane-dev python:python3-kolvane)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 component)
  list(GET pair 1 package)
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  install(FILES copyright DESTINATION ${folder} COMPONENT ${component})
  install_gzipped(${CMAKE_CURRENT_BINARY_DIR}/changelog ${folder} changelog ${component})
endforeach()

# install_documents(COMPONENT FOLDER DOCUMENT...): documents of docs/ into share/doc/FOLDER. Links to other files of the
# source tree are changed to where those are installed.
function(install_documents component folder)
  string(REGEX REPLACE "[^/]+" ".." prefix share/doc/${folder})
  foreach(document IN LISTS ARGN)
    set(source ${PROJECT_SOURCE_DIR}/docs/${document})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(READ ${source} text)
    string(REGEX REPLACE "\\]\\((\\.\\./)+help/templates\\)" "](${prefix}/${KOLVANE_INSTALL_COMPONENTDIR})" text "${text}")
    string(REPLACE "](../include/" "](${prefix}/${CMAKE_INSTALL_INCLUDEDIR}/" text "${text}")
    string(REPLACE "](../examples/" "](examples/" text "${text}")
    string(REPLACE "](python.md" "](../python3-kolvane/python.md" text "${text}")
    if(NOT component STREQUAL runtime)
      string(REGEX REPLACE "\\]\\((command-line|status-codes)\\.md" "](../kolvane/\\1.md" text "${text}")
    endif()
    cmake_path(GET document FILENAME name)
    file(CONFIGURE OUTPUT documents/${folder}/${name} CONTENT "${text}" @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/documents/${folder}/${name}
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${folder} COMPONENT ${component})
  endforeach()
endfunction()
install_documents(runtime kolvane amplifier.md command-line.md port-library.md status-codes.md)
install_documents(runtime kolvane/formats formats/answers.md formats/command-file.md formats/decode.md formats/extras.md
                  formats/histories.md formats/log-file.md formats/ports-ini.md formats/settings.md formats/state.md
                  formats/template.md formats/transcript.md formats/unsaved-list.md formats/values-csv.md)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/formats/examples
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/kolvane/formats COMPONENT runtime)
install_documents(development kolvane-dev embedding.md)
install_documents(python python3-kolvane python.md)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/cpp-host ${PROJECT_SOURCE_DIR}/examples/cpp-instrument
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/kolvane-dev/examples
        COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/examples/python_host.py ${PROJECT_SOURCE_DIR}/examples/python_asyncio_host.py
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/python3-kolvane/examples COMPONENT python)

get_directory_property(packed KOLVANE_GZIPPED)
add_custom_target(kolvane_gzipped ALL DEPENDS ${packed})
