# The automation server DLL (DLLKiv.dll) of a mingw-w64 cross build: the
# type library's IDL comes from kiv_idl of a native build (KIV_IDL_TOOL),
# widl compiles it and the DLL carries it as resource 1.
enable_language(RC)
if(NOT KIV_IDL_TOOL)
  message(FATAL_ERROR "KIV_IDL_TOOL: path of kiv_idl from a native build (./dev windows builds it first)")
endif()
if(NOT KIV_WIDL)
  set(KIV_WIDL widl)
endif()
# IDispatch and IUnknown come from Wine's stdole2.tlb (package wine64).
find_path(KIV_STDOLE2_DIR stdole2.tlb NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/i386-linux-gnu/wine/i386-windows
                /usr/lib/wine/x86_64-windows /usr/lib/wine/i386-windows)
if(NOT KIV_STDOLE2_DIR)
  message(FATAL_ERROR "stdole2.tlb not found: install wine64")
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(widl_target --win64)
else()
  set(widl_target --win32)
endif()
set(idl ${CMAKE_BINARY_DIR}/DLLKiv.idl)
set(tlb ${CMAKE_BINARY_DIR}/DLLKiv.tlb)
add_custom_command(OUTPUT ${idl} COMMAND ${KIV_IDL_TOOL} ${idl} DEPENDS ${KIV_IDL_TOOL}
                   COMMENT "IDL from the dispatch tables")
add_custom_command(OUTPUT ${tlb}
                   COMMAND ${KIV_WIDL} ${widl_target} -I ${CMAKE_SOURCE_DIR}/src/com -L ${KIV_STDOLE2_DIR} -t -o ${tlb} ${idl}
                   DEPENDS ${idl} ${CMAKE_SOURCE_DIR}/src/com/automation_types.idl
                   COMMENT "Type library")
add_custom_target(kiv_typelib DEPENDS ${tlb})

# GCC 12 reports overlaps inside std::string that cannot happen (-Wrestrict
# at -O3 with the mingw headers).
target_compile_options(kivcore PRIVATE -Wno-restrict)

file(GLOB KIV_COM_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/com/*.cpp)
add_library(DLLKiv SHARED ${KIV_COM_SOURCES} src/com/DLLKiv.def src/com/DLLKiv.rc)
add_dependencies(DLLKiv kiv_typelib)
set_source_files_properties(src/com/DLLKiv.rc PROPERTIES OBJECT_DEPENDS ${tlb})
set_target_properties(DLLKiv PROPERTIES PREFIX "" OUTPUT_NAME DLLKiv)
target_include_directories(DLLKiv PRIVATE ${CMAKE_BINARY_DIR})
target_compile_definitions(DLLKiv PRIVATE UNICODE _UNICODE)
target_compile_options(DLLKiv PRIVATE -Wno-restrict)
target_link_libraries(DLLKiv PRIVATE kivcore oleaut32 ole32 uuid advapi32 user32 gdi32 shell32)
# Nothing beside system DLLs: the C++ runtime and winpthread go inside.
target_link_options(DLLKiv PRIVATE -static -static-libgcc -static-libstdc++)

# A C++ automation client of the registered DLL, run under Wine by the tests
# (named arguments, typed by-reference arguments, the exception record) and
# as the IDispatch benchmark.
add_executable(dispatch_client tests/windows/dispatch_client.cpp)
target_compile_definitions(dispatch_client PRIVATE UNICODE _UNICODE)
target_link_libraries(dispatch_client PRIVATE oleaut32 ole32 uuid user32 gdi32)
target_link_options(dispatch_client PRIVATE -static -static-libgcc -static-libstdc++)
