# Installs the build into a scratch prefix and builds the C++ example against
# it both ways: as a CMake package (shared and static library) and through
# pkg-config; each program must run and print what the example promises.
file(REMOVE_RECURSE ${WORK})
set(prefix ${WORK}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}\n${out}")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()

set(expected [=[[  1'234,50]
42
FmtNum(ByVal N As Variant, ByVal Lun As Integer, Optional ByVal Dec As Integer = 0, Optional ByRef Fl_Mig As Boolean = False, Optional ByRef Fill_Num As String = "", Optional ByRef MaxEndingZeros As Integer = -1) As String
[  1'234,50]
42,5
Error 438: Object doesn't support this property or method
]=])
function(expect_example program)
  run(${program})
  if(NOT out STREQUAL expected)
    message(FATAL_ERROR "${program} printed:\n${out}\ninstead of:\n${expected}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

# What a user finds in the prefix.
run(${prefix}/bin/kiv --version)
if(NOT out STREQUAL "kiv ${VERSION}\n")
  message(FATAL_ERROR "installed kiv --version printed: ${out}")
endif()
foreach(f include/kiv/kiv.hpp share/man/man1/kiv.1 share/bash-completion/completions/kiv)
  if(NOT EXISTS ${prefix}/${f})
    message(FATAL_ERROR "not installed: ${f}")
  endif()
endforeach()
file(GLOB internals ${prefix}/include/kiv/frame/platform.hpp ${prefix}/include/kiv/frame/host.hpp)
if(internals)
  message(FATAL_ERROR "internal headers installed: ${internals}")
endif()

# CMake package: find_package(kiv), kiv::kiv and kiv::kiv_static.
run(${CMAKE_COMMAND} -S ${SOURCE}/examples -B ${WORK}/cmake-consumer -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK}/cmake-consumer -j2)
expect_example(${WORK}/cmake-consumer/use_from_cpp)
expect_example(${WORK}/cmake-consumer/use_from_cpp_static)

# pkg-config, from the installed kiv.pc alone.
find_program(PKG_CONFIG pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
run(${PKG_CONFIG} --cflags --libs kiv)
string(STRIP "${out}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${CXX} -std=c++20 ${SOURCE}/examples/use_from_cpp.cpp ${flags} -Wl,-rpath,${prefix}/lib
    -o ${WORK}/pkg-config-consumer)
expect_example(${WORK}/pkg-config-consumer)
