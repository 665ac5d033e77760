# The borders of the house. A folder of src/ is compiled with an include path
# that shows it nothing but itself and the folders it is allowed to see, so an
# include that crosses a border does not compile. Folders inside of a folder are
# rooms with borders of their own.

# lumenfold_library(FOLDER [ROOMS room...] [SEES folder...])
#   A static library from the source files of src/FOLDER ("render/paint"); headers of
#   FOLDER and SEES are within its reach, and the libraries of SEES are linked. Its
#   target has the folder's name with _ for slashes ("render_paint").
#   With ROOMS, those folders within FOLDER belong to it. A room sees the headers that
#   stand in its storey beside the rooms.
function(lumenfold_library folder)
  cmake_parse_arguments(ARG "" "" "ROOMS;SEES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})

  set(own ${folder})
  if(ARG_ROOMS)
    list(TRANSFORM ARG_ROOMS PREPEND ${folder}/ OUTPUT_VARIABLE own)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    set(sources ${found})
  endif()
  foreach(each IN LISTS own)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${each}/*.cpp)
    list(APPEND sources ${found})
  endforeach()

  foreach(room IN LISTS ARG_ROOMS)
    set_property(GLOBAL APPEND PROPERTY LUMENFOLD_ROOMS_OF_${folder} ${folder}/${room})
  endforeach()
  add_library(${name} STATIC ${sources})
  cmake_path(GET folder PARENT_PATH storey)
  lumenfold_reach(${name} ${storey} ${folder} ${ARG_SEES})
  target_link_libraries(${name} PRIVATE warnings)
  if(WIN32)  # a program waits for the module to be loaded, and none of it is hot
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-Os>)
  endif()
  lumenfold_unity(${name})
  foreach(seen IN LISTS ARG_SEES)
    string(REPLACE "/" "_" library ${seen})
    target_link_libraries(${name} PUBLIC ${library})
  endforeach()
endfunction()

# Compiles the files of a target several at once, if builds do so. What is for Windows is mostly built from nothing:
# there all of a target are one file.
function(lumenfold_unity target)
  set(batch 6)
  if(WIN32)
    set(batch 0)
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${LUMENFOLD_UNITY} UNITY_BUILD_BATCH_SIZE ${batch})
endfunction()

# The include path of a target: the headers of these folders of src/ and no others.
function(lumenfold_reach target)
  set(reach ${CMAKE_BINARY_DIR}/reach/${target})
  file(REMOVE_RECURSE ${reach})
  foreach(folder IN LISTS ARGN)
    get_property(rooms GLOBAL PROPERTY LUMENFOLD_ROOMS_OF_${folder})
    foreach(each IN LISTS folder rooms)
      file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${each}/*.h)
      file(MAKE_DIRECTORY ${reach}/${each})
      foreach(header IN LISTS headers)
        cmake_path(GET header FILENAME file)
        file(CREATE_LINK ${header} ${reach}/${each}/${file} SYMBOLIC)
      endforeach()
    endforeach()
  endforeach()
  target_include_directories(${target} PRIVATE ${reach})
endfunction()

# lumenfold_storey(FOLDER room...): the libraries of a folder's rooms under one name.
function(lumenfold_storey folder)
  add_library(${folder} INTERFACE)
  foreach(room IN LISTS ARGN)
    target_link_libraries(${folder} INTERFACE ${folder}_${room})
    set_property(GLOBAL APPEND PROPERTY LUMENFOLD_ROOMS_OF_${folder} ${folder}/${room})
  endforeach()
endfunction()

# For what is compiled longer than it runs: no optimization where sanitizers make what is optimized twice as
# slow to compile.
function(lumenfold_plain_under_sanitizers target)
  target_compile_options(${target} PRIVATE $<$<BOOL:${LUMENFOLD_FUZZ}>:-O0>)
endfunction()

# For programs that are built oftener than they run: little optimization, and the headers of the test library
# read once for all of them.
function(lumenfold_quick_to_build program)
  target_compile_options(${program} PRIVATE $<$<CONFIG:Release>:-O1>)
  lumenfold_plain_under_sanitizers(${program})
  if(program MATCHES "^test_windows_")
    # They are compiled with the system's definitions, the others without.
  elseif(TARGET test_basic AND NOT program STREQUAL test_basic)
    target_precompile_headers(${program} REUSE_FROM test_basic)
  else()
    target_precompile_headers(${program} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
endfunction()

# Everything that tests and fuzzes but the end-to-end tests.
add_custom_target(unit_tests)
add_custom_target(fuzzers)

# What is tested on Windows has names of its own: windows.forms for "windows_forms", windows.basic for "basic".
function(lumenfold_windows_test_name result name)
  string(REGEX REPLACE "^windows_" "" plain ${name})
  set(${result} windows.${plain} PARENT_SCOPE)
endfunction()

# lumenfold_tests(NAME LINKS target...): the test program of tests/NAME, which
# sees all of src/ and tests/.
function(lumenfold_tests name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_executable(test_${name} ${sources})
  lumenfold_quick_to_build(test_${name})
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest_main warnings)
  add_dependencies(unit_tests test_${name})
  if(CMAKE_CROSSCOMPILING)
    lumenfold_unity(test_${name})
    # The fixtures' anonymous namespaces stand in files that are included then.
    target_compile_options(test_${name} PRIVATE -Wno-subobject-linkage)
    # To start it once for each case would take longer than all of them. They share a Windows and its registry.
    lumenfold_windows_test_name(test ${name})
    add_test(NAME ${test} COMMAND test_${name})
    set_tests_properties(${test} PROPERTIES RESOURCE_LOCK wine)
  else()
    gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60)
  endif()
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
