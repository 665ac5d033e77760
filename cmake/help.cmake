# The target help_chm: the pages of docs/help as one compiled file, help.chm, as viewers of Windows read it. Its
# contents are the lists of index.html, its index the headings of all pages.
find_program(LUMENFOLD_CHMCMD chmcmd REQUIRED)  # Debian's fp-utils

file(GLOB help_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*)
set(help_folder ${CMAKE_BINARY_DIR}/help)
set(help_copies)
set(help_list "")
set(help_headings)
# A line of the contents or of the index; names stand in attributes.
function(help_entry variable name page)
  string(REPLACE "\"" "&quot;" name "${name}")
  string(APPEND ${variable} "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"${name}\">")
  string(APPEND ${variable} "<param name=\"Local\" value=\"${page}\"></object>\n")
  set(${variable} "${${variable}}" PARENT_SCOPE)
endfunction()
foreach(page IN LISTS help_pages)
  cmake_path(GET page FILENAME name)
  configure_file(${page} ${help_folder}/${name} COPYONLY)
  list(APPEND help_copies ${help_folder}/${name})
  string(APPEND help_list "${name}\n")
  file(READ ${page} text)
  string(REGEX MATCHALL "<(title|h2)>[^<]+" headings "${text}")
  foreach(heading IN LISTS headings)
    string(REGEX REPLACE "<[a-z0-9]+>" "" heading "${heading}")
    list(APPEND help_headings "${heading}|${name}")
  endforeach()
endforeach()
list(SORT help_headings CASE INSENSITIVE)
foreach(heading IN LISTS help_headings)
  string(REPLACE "|" ";" heading "${heading}")
  help_entry(help_index ${heading})
endforeach()

# A book for each heading of the contents, a page for each line below it.
file(READ ${PROJECT_SOURCE_DIR}/docs/help/index.html text)
string(REGEX MATCHALL "<h2>[^<]+|<a href=\"[^\"]+\">[^<]+" lines "${text}")
help_entry(help_contents "Contents" index.html)
set(is_open "")
foreach(line IN LISTS lines)
  if(line MATCHES "<h2>(.+)")
    string(APPEND help_contents "${is_open}<li><object type=\"text/sitemap\">"
                                "<param name=\"Name\" value=\"${CMAKE_MATCH_1}\"></object>\n<ul>\n")
    set(is_open "</ul>\n")
  elseif(line MATCHES "<a href=\"(.+)\">(.+)")
    help_entry(help_contents "${CMAKE_MATCH_2}" "${CMAKE_MATCH_1}")
  endif()
endforeach()
file(CONFIGURE OUTPUT ${help_folder}/help.hhc CONTENT "<html><body><ul>\n${help_contents}${is_open}</ul></body></html>\n")
file(CONFIGURE OUTPUT ${help_folder}/help.hhk CONTENT "<html><body><ul>\n${help_index}</ul></body></html>\n")
file(CONFIGURE OUTPUT ${help_folder}/help.hhp CONTENT "[OPTIONS]
Compiled file=help.chm
Title=Corvane Lumenfold 2000
Default topic=index.html
Contents file=help.hhc
Index file=help.hhk
Full-text search=Yes
Compatibility=1.1 or later

[FILES]
${help_list}")
add_custom_command(OUTPUT ${help_folder}/help.chm
  COMMAND ${LUMENFOLD_CHMCMD} help.hhp
  DEPENDS ${help_copies} ${help_folder}/help.hhp ${help_folder}/help.hhc ${help_folder}/help.hhk
  WORKING_DIRECTORY ${help_folder}
  VERBATIM)
add_custom_target(help_chm DEPENDS ${help_folder}/help.chm)
set_target_properties(help_chm PROPERTIES FILE ${help_folder}/help.chm)
