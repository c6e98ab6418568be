# Exit statuses and messages of the kiv driver that a conformance file
# cannot observe from inside. Run with -DKIV=<path of kiv> -DDIR=<this folder>.
function(expect what actual wanted)
  if(NOT "${actual}" STREQUAL "${wanted}")
    message(FATAL_ERROR "${what}: got [${actual}], wanted [${wanted}]")
  endif()
endfunction()

execute_process(COMMAND ${KIV} run ${DIR}/bad_line.kiv
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("run of an unparsable line: status" "${rc}" "2")
expect("run of an unparsable line: output" "${out}" "")
if(NOT err MATCHES "bad_line\\.kiv:3: ")
  message(FATAL_ERROR "run of an unparsable line: no file:line on stderr: ${err}")
endif()

execute_process(COMMAND ${KIV} check ${DIR}/bad_line.kiv RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
expect("check of an unparsable line: status" "${rc}" "2")

execute_process(COMMAND ${KIV} eval "? 1" "? (" RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("eval of an unparsable line: status" "${rc}" "2")
if(NOT err MATCHES "eval:2: ")
  message(FATAL_ERROR "eval of an unparsable line: no position on stderr: ${err}")
endif()

execute_process(COMMAND ${KIV} check ${DIR}/failing_cases.kiv RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("check with failures: status" "${rc}" "1")
string(REGEX MATCHALL "[^\n]+" lines "${out}")
list(LENGTH lines count)
expect("check with failures: lines (two failures and the tally)" "${count}" "3")
list(GET lines 0 first)
list(GET lines 1 second)
list(GET lines 2 last)
if(NOT first MATCHES "failing_cases\\.kiv:4: .*String \"b\".*String \"c\"")
  message(FATAL_ERROR "check with failures: first report: ${first}")
endif()
if(NOT second MATCHES "failing_cases\\.kiv:6: ")
  message(FATAL_ERROR "check with failures: second report: ${second}")
endif()
expect("check with failures: tally" "${last}" "1 passed, 2 failed")

execute_process(COMMAND ${KIV} eval "x = 3" "? x" "NoSuchOperation(1)" RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("eval: status after a run-time error" "${rc}" "0")
expect("eval: output" "${out}" "Integer 3\nError 438: Object doesn't support this property or method\n")

execute_process(COMMAND ${KIV} help NoSuchOperation RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
expect("help of an unknown name: status" "${rc}" "1")

execute_process(COMMAND ${KIV} help EnCF_Result RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("help of an enumeration: status" "${rc}" "0")
expect("help of an enumeration: output" "${out}"
       "Enum EnCF_Result\n  CF_IsOK = 0\n  CF_Num = 1\n  CF_Short = 2\n  CF_Long = 3\n  CF_Bad = 90\n  CF_Null = 99\n")

execute_process(COMMAND ${KIV} help add RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("help of a Col_KIV member: status" "${rc}" "0")
if(NOT out MATCHES "^Col_KIV\\.Add\\(ByRef DlK_DatMask As Variant, Optional ByRef sKey As String = \"\"\\) As Object\n")
  message(FATAL_ERROR "help of a Col_KIV member: ${out}")
endif()

execute_process(COMMAND ${KIV} list Item RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("list of Col_KIV's default member" "${out}"
       "SelItemData(ByRef Lst As Object, ByVal N_Data As Long) As Long\nGetItemData(ByRef Lst As Object, Optional ByVal Std As Long = 0) As Long\nCol_KIV.Item(ByRef vntIndexKey As Variant) As Object (property: get, default member)\n")

execute_process(COMMAND ${KIV} help REG_DWORD RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("help of a constant" "${out}" "REG_DWORD = 4  (constant, Long)\n")
