# Tests of kiv as users take it: installed, packaged, completed on the
# command line, described by its man page.
set(KIV_INSTALL_TEST_DIR ${PROJECT_BINARY_DIR}/install-test)
add_test(NAME driver.version COMMAND kiv --version)
set_tests_properties(driver.version PROPERTIES PASS_REGULAR_EXPRESSION "^kiv ${PROJECT_VERSION}\n$")
add_test(NAME driver.man_page
         COMMAND ${CMAKE_COMMAND} -DKIV=$<TARGET_FILE:kiv> -DMAN=${PROJECT_SOURCE_DIR}/docs/kiv.1
                 -P ${CMAKE_CURRENT_LIST_DIR}/man_page.cmake)
add_test(NAME driver.completion
         COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/completion_test.sh
                 ${PROJECT_SOURCE_DIR}/tools/completion/kiv.bash $<TARGET_FILE:kiv>)
if(KIV_INSTALL)
  add_test(NAME install.consumers
           COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -DSOURCE=${PROJECT_SOURCE_DIR}
                   -DWORK=${KIV_INSTALL_TEST_DIR} -DCXX=${CMAKE_CXX_COMPILER} -DVERSION=${PROJECT_VERSION}
                   -P ${CMAKE_CURRENT_LIST_DIR}/install_test.cmake)
  add_test(NAME install.deb
           COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -DWORK=${PROJECT_BINARY_DIR}/deb-test
                   -DVERSION=${PROJECT_VERSION} -P ${CMAKE_CURRENT_LIST_DIR}/deb_test.cmake)
  # Both install the build tree; one at a time keeps them quick on 2 cores.
  set_tests_properties(install.consumers install.deb PROPERTIES RESOURCE_LOCK kiv_install TIMEOUT 600)
endif()
