# kolvane_glob(VARIABLE FOLDERS...): the files of the folders. Adding or removing a file changes its folder, which makes
# CMake run again; CONFIGURE_DEPENDS would check at every build.
function(kolvane_glob variable)
  list(TRANSFORM ARGN APPEND /* OUTPUT_VARIABLE patterns)
  file(GLOB files LIST_DIRECTORIES false ${patterns})
  set(${variable} ${files} PARENT_SCOPE)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ARGN})
endfunction()

# What the component looks for beside itself, except the help file.
kolvane_glob(KOLVANE_COMPONENT_FILES ${PROJECT_SOURCE_DIR}/help/templates)
list(APPEND KOLVANE_COMPONENT_FILES ${PROJECT_SOURCE_DIR}/help/TermCmdHelp.rtf ${PROJECT_SOURCE_DIR}/help/demo.CMD)

# kolvane_help_file(TARGET PAGES TOPICS OUTPUT): a target that compiles the pages of a folder into a help file.
function(kolvane_help_file target pages topics output)
  find_program(KOLVANE_CHMCMD chmcmd REQUIRED)
  kolvane_glob(page_files ${pages} ${pages}/images)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${PROJECT_SOURCE_DIR}/help/compile-help ${pages} ${topics} ${output} ${CMAKE_CURRENT_BINARY_DIR}/${target}
    DEPENDS ${PROJECT_SOURCE_DIR}/help/compile-help ${topics} ${page_files}
    COMMENT "Compiling the help file ${output}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
