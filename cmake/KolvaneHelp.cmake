# kolvane_help_file(TARGET PAGES TOPICS OUTPUT): a target that compiles the pages of a folder to a help file.
function(kolvane_help_file target pages topics output)
  find_program(KOLVANE_CHMCMD chmcmd REQUIRED)
  file(GLOB_RECURSE page_files CONFIGURE_DEPENDS ${pages}/*)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${PROJECT_SOURCE_DIR}/help/compile-help ${pages} ${topics} ${output} ${CMAKE_CURRENT_BINARY_DIR}/${target}
    DEPENDS ${PROJECT_SOURCE_DIR}/help/compile-help ${topics} ${page_files}
    COMMENT "Compiling the help file ${output}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
