# What is installed beside the program and its help: pages of the manual and the shell's completion, both made by the
# program from its table of verbs; samples; documentation. And the target package: all of it as a package of Debian.
set(pages
  desk.md distribution.md hubs.md installing.md interface.md kiosk.md many-screens.md monitoring.md offline.md
  operating.md playing.md screens.md settings.md show.md tags.md)
set(manual ${CMAKE_BINARY_DIR}/manual)
add_custom_command(OUTPUT ${manual}/completion/lumenfold
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual}
  COMMAND lumenfold manual ${manual}
  DEPENDS lumenfold
  VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual}/completion/lumenfold)

install(DIRECTORY ${manual}/man/ DESTINATION share/man/man1)
install(FILES ${manual}/completion/lumenfold DESTINATION share/bash-completion/completions)
install(DIRECTORY contrib/hub contrib/prometheus contrib/grafana DESTINATION share/lumenfold USE_SOURCE_PERMISSIONS)
install(DIRECTORY samples/ DESTINATION share/lumenfold/samples USE_SOURCE_PERMISSIONS PATTERN make EXCLUDE)
install(DIRECTORY docs/linking docs/images DESTINATION share/doc/lumenfold)
# For who shows decks and who links them; what is about the code stays with the code.
list(TRANSFORM pages PREPEND docs/)
install(FILES ${pages} README.md CHANGELOG.md src/web/bundles/charts.licences.txt
        DESTINATION share/doc/lumenfold)

# The packages' version is the program's.
file(STRINGS debian/changelog changelog LIMIT_COUNT 1)
if(NOT changelog MATCHES "^lumenfold \\(${PROJECT_VERSION}\\)")
  message(FATAL_ERROR "debian/changelog begins with '${changelog}', but the program's version is ${PROJECT_VERSION}.")
endif()
add_custom_target(package
  COMMAND ${PROJECT_SOURCE_DIR}/scripts/package.sh ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/packages
  DEPENDS lumenfold manual
  USES_TERMINAL
  VERBATIM)
