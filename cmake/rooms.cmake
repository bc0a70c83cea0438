# How every target of the tree is compiled, and how a room of src/ is declared.

set(THREADS_PREFER_PTHREAD_FLAG ON)
find_package(Threads REQUIRED)

add_library(veltrix_flags INTERFACE)
target_include_directories(veltrix_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(veltrix_flags INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
target_compile_options(veltrix_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  -ffp-contract=off                            # the same result on every machine
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)     # a false alarm of gcc 12 on string concatenation, bug 105651
if(VELTRIX_SANITIZE)
  target_compile_options(veltrix_flags INTERFACE -fsanitize=${VELTRIX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)  # false alarms in the standard library's own <regex>
  target_link_options(veltrix_flags INTERFACE -fsanitize=${VELTRIX_SANITIZE})
endif()

# veltrix_room(NAME SOURCES file... [USES room...] [LIBRARIES target...])
# One folder of src/ as one library, veltrix_NAME, with the rooms below that it uses.
function(veltrix_room name)
  cmake_parse_arguments(room "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  add_library(veltrix_${name} STATIC ${room_SOURCES})
  list(TRANSFORM room_USES PREPEND veltrix_)
  target_link_libraries(veltrix_${name} PUBLIC veltrix_flags ${room_USES} PRIVATE ${room_LIBRARIES})
endfunction()

# veltrix_program(NAME SOURCES file... USES room...): one program of apps/.
function(veltrix_program name)
  cmake_parse_arguments(program "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  add_executable(${name} ${program_SOURCES})
  list(TRANSFORM program_USES PREPEND veltrix_)
  target_link_libraries(${name} PRIVATE veltrix_flags ${program_USES} ${program_LIBRARIES})
  target_compile_definitions(${name} PRIVATE VELTRIX_VERSION="${PROJECT_VERSION}")
endfunction()

# veltrix_test(NAME SOURCES file... USES room...): one test program, its cases told to ctest one by one.
function(veltrix_test name)
  cmake_parse_arguments(test "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  add_executable(test_${name} ${test_SOURCES})
  list(TRANSFORM test_USES PREPEND veltrix_)
  target_link_libraries(test_${name} PRIVATE veltrix_flags ${test_USES} ${test_LIBRARIES} GTest::gtest_main)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(test_${name} PRIVATE
    VELTRIX_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}" VELTRIX_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  gtest_discover_tests(test_${name} PROPERTIES TIMEOUT 300 DISCOVERY_TIMEOUT 60)
endfunction()
