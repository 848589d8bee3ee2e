# What every target of the house has in common.

find_package(Threads REQUIRED)

add_library(walrim_options INTERFACE)
target_compile_options(walrim_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                                -Wnon-virtual-dtor -Woverloaded-virtual)
# A switch over an enum names every case: what a new one concerns does not compile without it.
target_compile_options(walrim_options INTERFACE -Werror=switch)
# At -O3 g++ 12 takes texts that are put together with + for copies that overlap.
target_compile_options(walrim_options INTERFACE
  $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
if(WALRIM_WERROR)
  target_compile_options(walrim_options INTERFACE -Werror)
endif()
if(WALRIM_SANITIZE)
  target_compile_options(walrim_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_link_options(walrim_options INTERFACE -fsanitize=address,undefined)
endif()
if(WALRIM_FUZZ)
  target_compile_options(walrim_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# walrim_library(FOLDER [LINK libraries...]): the one library of a folder of src/, made of all sources in it
# (main.cpp apart). Its link line is the folder's row in docs/layers.md.
function(walrim_library folder)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(compiled ${sources})
  list(FILTER compiled INCLUDE REGEX "\\.cpp$")
  if(compiled)
    add_library(walrim_${folder} STATIC ${sources})
    target_include_directories(walrim_${folder} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(walrim_${folder} PUBLIC ${ARG_LINK} PRIVATE walrim_options)
  else()
    add_library(walrim_${folder} INTERFACE)
    target_include_directories(walrim_${folder} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(walrim_${folder} INTERFACE ${ARG_LINK})
  endif()
endfunction()

# walrim_test(NAME [LINE filter] [LINK libraries...]): one GoogleTest program made of all *_test.cpp of the current folder.
# LINE: the tests (a GoogleTest filter) that talk over a real line in real time; they run alone and carry the label "line".
function(walrim_test name)
  cmake_parse_arguments(ARG "" "LINE" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} walrim_options GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE WALRIM_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  # What a test does itself is not worth optimising: so it compiles in half the time, sanitized in a third.
  target_compile_options(${name} PRIVATE -O0)
  set(options NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60)
  if(ARG_LINE)
    gtest_discover_tests(${name} ${options} TEST_FILTER "${ARG_LINE}" TEST_LIST ${name}_LINE
                         PROPERTIES TIMEOUT 300 LABELS line RUN_SERIAL TRUE)
  endif()
  if(NOT ARG_LINE STREQUAL "*")
    gtest_discover_tests(${name} ${options} TEST_FILTER "-${ARG_LINE}" PROPERTIES TIMEOUT 300)
  endif()
endfunction()
include(GoogleTest)
