# What `cmake --install` puts in place, and the Debian package made of it:
# the kiv driver, the static and shared library, the public headers under
# include/kiv, a CMake package (find_package(kiv) -> kiv::kiv) and kiv.pc, the
# man page and the bash completion.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The headers a user needs: the value model, errors, text helpers and
# conversions, the Cl_KIV class and its collection, and the dispatch entry
# points. They keep their "frame/..." includes, so include/kiv is on the
# include path too.
set(KIV_PUBLIC_HEADERS value ref errors strings convert runtime dispatchable cl_kiv col_kiv dispatch)
list(TRANSFORM KIV_PUBLIC_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/src/frame/)
list(TRANSFORM KIV_PUBLIC_HEADERS APPEND .hpp)
install(FILES ${KIV_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiv/frame)
install(FILES ${PROJECT_SOURCE_DIR}/include/kiv/kiv.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiv)

install(TARGETS kiv RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS kivcore kiv_shared EXPORT kivTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# A stripped install (the .deb) strips the static library's debug
# information too, which install/strip leaves: it is most of its size.
install(CODE "if(CMAKE_INSTALL_DO_STRIP)
  execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-debug
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:kivcore>\")
endif()")
set(KIV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kiv)
install(EXPORT kivTargets NAMESPACE kiv:: DESTINATION ${KIV_CMAKE_DIR})

# The libraries' own dependencies, read from the static library's link
# interface (the shared one hides them): a package for find_dependency() in
# kivConfig.cmake and a linker flag for Libs.private in kiv.pc. An imported
# target's package is its namespace unless named here.
set(KIV_PACKAGE_OF_SQLite::SQLite3 SQLite3)
set(KIV_PACKAGE_OF_Threads::Threads Threads)
set(KIV_DEPENDENCY_PACKAGES "")
set(KIV_PC_LIBS_PRIVATE "")
function(kiv_library_flag item out)
  if(item MATCHES "^-")
    set(${out} "${item}" PARENT_SCOPE)
  else()
    get_filename_component(name "${item}" NAME_WE)
    string(REGEX REPLACE "^lib" "" name "${name}")
    set(${out} "-l${name}" PARENT_SCOPE)
  endif()
endfunction()
get_target_property(kiv_links kivcore LINK_LIBRARIES)
foreach(item IN LISTS kiv_links)
  if(NOT item OR item MATCHES "^\\$<")
    if(item)
      message(WARNING "kiv.pc and kivConfig.cmake do not follow the conditional dependency ${item}")
    endif()
    continue()
  endif()
  if(TARGET ${item})
    get_target_property(imported ${item} IMPORTED)
    if(NOT imported)
      continue()
    endif()
    if(DEFINED KIV_PACKAGE_OF_${item})
      list(APPEND KIV_DEPENDENCY_PACKAGES ${KIV_PACKAGE_OF_${item}})
    else()
      string(REGEX REPLACE "::.*" "" package ${item})
      list(APPEND KIV_DEPENDENCY_PACKAGES ${package})
    endif()
    get_target_property(location ${item} IMPORTED_LOCATION)
    if(NOT location)
      get_target_property(location ${item} IMPORTED_LOCATION_RELEASE)
    endif()
    get_target_property(more ${item} INTERFACE_LINK_LIBRARIES)
    foreach(lib IN LISTS location more)
      if(lib AND NOT lib MATCHES "^\\$<|::")
        kiv_library_flag("${lib}" flag)
        list(APPEND KIV_PC_LIBS_PRIVATE ${flag})
      endif()
    endforeach()
  else()
    kiv_library_flag("${item}" flag)
    list(APPEND KIV_PC_LIBS_PRIVATE ${flag})
  endif()
endforeach()
list(REMOVE_DUPLICATES KIV_DEPENDENCY_PACKAGES)
list(REMOVE_DUPLICATES KIV_PC_LIBS_PRIVATE)
list(JOIN KIV_PC_LIBS_PRIVATE " " KIV_PC_LIBS_PRIVATE)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kivConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/kivConfig.cmake INSTALL_DESTINATION ${KIV_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kivConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kivConfig.cmake ${PROJECT_BINARY_DIR}/kivConfigVersion.cmake
        DESTINATION ${KIV_CMAKE_DIR})

# kiv.pc finds its prefix from where it lies, so the tree can be moved.
file(RELATIVE_PATH KIV_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/kiv.pc.in ${PROJECT_BINARY_DIR}/kiv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kiv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_SOURCE_DIR}/docs/kiv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/tools/completion/kiv.bash RENAME kiv
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

# ./dev package: one .deb with all of it; its Depends come from the
# libraries the binaries link (dpkg-shlibdeps).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kiv)
set(CPACK_PACKAGE_VENDOR "KIV developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "KIV developers <kiv@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
include(CPack)
