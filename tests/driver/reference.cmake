# docs/reference.md is what kiv_reference prints from the interface now:
# a row added to the table without regenerating it fails here.
# Run with -DTOOL=<kiv_reference> -DSOURCE=<source folder>.
execute_process(COMMAND ${TOOL} ${SOURCE}/src/frame/interface_table.cpp
                RESULT_VARIABLE rc OUTPUT_VARIABLE generated)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "kiv_reference failed")
endif()
file(READ ${SOURCE}/docs/reference.md checked_in)
if(NOT generated STREQUAL checked_in)
  message(FATAL_ERROR "docs/reference.md is out of step with the interface: run ./dev reference")
endif()
