# The target help_chm: the pages of docs/help as one compiled file, help.chm, as viewers of Windows read it.
find_program(LUMENFOLD_CHMCMD chmcmd REQUIRED)  # Debian's fp-utils

file(GLOB help_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*)
set(help_folder ${CMAKE_BINARY_DIR}/help)
set(help_copies)
set(help_list "")
foreach(page IN LISTS help_pages)
  cmake_path(GET page FILENAME name)
  configure_file(${page} ${help_folder}/${name} COPYONLY)
  list(APPEND help_copies ${help_folder}/${name})
  string(APPEND help_list "${name}\n")
endforeach()
file(CONFIGURE OUTPUT ${help_folder}/help.hhp CONTENT "[OPTIONS]
Compiled file=help.chm
Title=Corvane Lumenfold 2000
Default topic=index.html
Full-text search=Yes
Compatibility=1.1 or later

[FILES]
${help_list}")
add_custom_command(OUTPUT ${help_folder}/help.chm
  COMMAND ${LUMENFOLD_CHMCMD} help.hhp
  DEPENDS ${help_copies} ${help_folder}/help.hhp
  WORKING_DIRECTORY ${help_folder}
  VERBATIM)
add_custom_target(help_chm DEPENDS ${help_folder}/help.chm)
set_target_properties(help_chm PROPERTIES FILE ${help_folder}/help.chm)
