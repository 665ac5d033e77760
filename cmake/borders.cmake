# The borders of the house. A folder of src/ is compiled with an include path
# that shows it nothing but itself and the folders it is allowed to see, so an
# include that crosses a border does not compile.

# lumenfold_library(NAME [FOLDERS folder...] [SEES folder...])
#   one static library from every source file of FOLDERS (default: NAME);
#   headers of FOLDERS and SEES are within its reach.
function(lumenfold_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;SEES" ${ARGN})
  if(NOT ARG_FOLDERS)
    set(ARG_FOLDERS ${name})
  endif()

  set(reach ${CMAKE_BINARY_DIR}/reach/${name})
  file(MAKE_DIRECTORY ${reach})
  set(sources)
  foreach(folder IN LISTS ARG_FOLDERS ARG_SEES)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${reach}/${folder} SYMBOLIC)
  endforeach()
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()

  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PRIVATE ${reach})
  target_link_libraries(${name} PRIVATE warnings)
endfunction()

# Everything that tests and fuzzes but the end-to-end tests.
add_custom_target(unit_tests)
add_custom_target(fuzzers)

# lumenfold_tests(NAME LINKS target...): the test program of tests/NAME, which
# sees all of src/ and tests/.
function(lumenfold_tests name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest_main warnings)
  add_dependencies(unit_tests test_${name})
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60)
endfunction()

# lumenfold_fuzzer(NAME SOURCES file... LINKS target... [OPTIONS option...] [SEEDS folder])
#   the program fuzz_NAME, and a test that runs it over the kept inputs and on from there.
function(lumenfold_fuzzer name)
  cmake_parse_arguments(ARG "" "SEEDS" "SOURCES;LINKS;OPTIONS" ${ARGN})
  add_executable(fuzz_${name} ${ARG_SOURCES})
  target_include_directories(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(fuzz_${name} PRIVATE ${ARG_LINKS} warnings)
  add_dependencies(fuzzers fuzz_${name})
  add_test(NAME fuzz.${name} COMMAND ${PROJECT_SOURCE_DIR}/fuzz/run.sh $<TARGET_FILE:fuzz_${name}> 10
                                     ${ARG_OPTIONS} ${ARG_SEEDS})
  set_tests_properties(fuzz.${name} PROPERTIES LABELS fuzz TIMEOUT 300)
endfunction()
