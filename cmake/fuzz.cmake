# The fuzz targets (tests/fuzz/fuzz_<target>.cpp). With KIV_FUZZ (clang,
# ./dev fuzz sets the sanitizer and coverage flags) each links libFuzzer's
# main; in a test build each links a main that replays its corpus
# (tests/fuzz/corpus/<target>/, seeds and regression cases) under ctest.
file(GLOB KIV_FUZZ_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/fuzz_*.cpp)
if(KIV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "the fuzz targets need clang (libFuzzer)")
  endif()
  foreach(source ${KIV_FUZZ_SOURCES})
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE kivscript kivcore)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  endforeach()
  return()
endif()
# The one header the targets take from clang, found where Debian's clang keeps it.
file(GLOB KIV_FUZZ_HEADER_DIRS /usr/lib/llvm-*/lib/clang/*/include)
find_path(KIV_FUZZ_INCLUDE fuzzer/FuzzedDataProvider.h PATHS ${KIV_FUZZ_HEADER_DIRS} NO_DEFAULT_PATH)
if(NOT KIV_FUZZ_INCLUDE)
  message(STATUS "fuzz corpus replay skipped: no fuzzer/FuzzedDataProvider.h (package clang)")
  return()
endif()
# Only that header, not the compiler's other headers beside it.
configure_file(${KIV_FUZZ_INCLUDE}/fuzzer/FuzzedDataProvider.h
               ${PROJECT_BINARY_DIR}/fuzz-include/fuzzer/FuzzedDataProvider.h COPYONLY)
foreach(source ${KIV_FUZZ_SOURCES})
  get_filename_component(name ${source} NAME_WE)
  string(REPLACE "fuzz_" "" target ${name})
  add_executable(${name}_replay ${source} ${PROJECT_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
  target_include_directories(${name}_replay SYSTEM PRIVATE ${PROJECT_BINARY_DIR}/fuzz-include)
  target_link_libraries(${name}_replay PRIVATE kivscript kivcore)
  add_test(NAME fuzz_corpus.${target} COMMAND ${name}_replay ${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${target})
endforeach()
