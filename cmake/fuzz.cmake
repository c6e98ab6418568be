# The fuzz targets (tests/fuzz/fuzz_<target>.cpp) and the replay of their
# corpora (tests/fuzz/corpus/<target>/: seeds and regression cases) under
# ctest. With KIV_FUZZ (clang; ./dev sets the sanitizer and coverage flags)
# each target links libFuzzer's main, which replays a folder given with
# -runs=0; in other builds each links a main that only replays.
file(GLOB KIV_FUZZ_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/fuzz_*.cpp)
if(KIV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "the fuzz targets need clang (libFuzzer)")
  endif()
else()
  # The one header the targets take from clang, where Debian's clang keeps it;
  # only that header, not the compiler's others beside it.
  file(GLOB KIV_FUZZ_HEADER_DIRS /usr/lib/llvm-*/lib/clang/*/include)
  find_path(KIV_FUZZ_INCLUDE fuzzer/FuzzedDataProvider.h PATHS ${KIV_FUZZ_HEADER_DIRS} NO_DEFAULT_PATH)
  if(NOT KIV_FUZZ_INCLUDE)
    message(STATUS "fuzz corpus replay skipped: no fuzzer/FuzzedDataProvider.h (package clang)")
    return()
  endif()
  configure_file(${KIV_FUZZ_INCLUDE}/fuzzer/FuzzedDataProvider.h
                 ${PROJECT_BINARY_DIR}/fuzz-include/fuzzer/FuzzedDataProvider.h COPYONLY)
endif()
foreach(source ${KIV_FUZZ_SOURCES})
  get_filename_component(name ${source} NAME_WE)
  string(REPLACE "fuzz_" "" target ${name})
  set(corpus ${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${target})
  if(KIV_FUZZ)
    add_executable(${name} ${source})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_test(NAME fuzz_corpus.${target} COMMAND ${name} -runs=0 ${corpus})
  else()
    set(name ${name}_replay)
    add_executable(${name} ${source} ${PROJECT_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
    target_include_directories(${name} SYSTEM PRIVATE ${PROJECT_BINARY_DIR}/fuzz-include)
    add_test(NAME fuzz_corpus.${target} COMMAND ${name} ${corpus})
  endif()
  target_link_libraries(${name} PRIVATE kivscript kivcore)
endforeach()
