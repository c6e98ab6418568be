# Exit statuses and messages of the kiv driver that a conformance file
# cannot observe from inside. Run with -DKIV=<path of kiv> -DDIR=<this folder>
# -DWORK=<a scratch folder>.
file(MAKE_DIRECTORY ${WORK})
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

# A run-time error: the value line on standard output as before, and the
# place and the operation on standard error, with a close name suggested.
execute_process(COMMAND ${KIV} eval "x = 1" "FmtNm x" "Incr x, \"a\"" "? x"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("run-time errors: status" "${rc}" "0")
expect("run-time errors: output" "${out}"
       "Error 438: Object doesn't support this property or method\nError 13: Type mismatch\nInteger 1\n")
expect("run-time errors: stderr" "${err}"
       "eval:2: FmtNm: Error 438: Object doesn't support this property or method; did you mean FmtNum?\neval:3: Incr: Error 13: Type mismatch\n")

# --strict stops at the first run-time error, before or after the command.
file(WRITE ${WORK}/strict.kiv "? 1\nx = Msk2Date(\"ab\")\n? 2\n")
execute_process(COMMAND ${KIV} run ${WORK}/strict.kiv --strict RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("--strict: status" "${rc}" "1")
expect("--strict: output" "${out}" "Integer 1\nError 13: Type mismatch\n")
if(NOT err MATCHES "strict\\.kiv:2: Msk2Date: Error 13: Type mismatch\n$")
  message(FATAL_ERROR "--strict: stderr: ${err}")
endif()
execute_process(COMMAND ${KIV} run ${WORK}/strict.kiv RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_QUIET)
expect("without --strict: status" "${rc}" "0")
expect("without --strict: output" "${out}" "Integer 1\nError 13: Type mismatch\nInteger 2\n")

# --echo: each printing line before what it prints.
execute_process(COMMAND ${KIV} --echo eval "x = 1" "? x" RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("--echo" "${out}" "> ? x\nInteger 1\n")

# A parse error: the place, the line, a caret under the column.
execute_process(COMMAND ${KIV} eval "? FmtNum(1,, 2" RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
expect("parse error: status" "${rc}" "2")
expect("parse error: stderr" "${err}"
       "eval:1: column 15: expected ',' but found the end of the line\n    ? FmtNum(1,, 2\n                  ^\n")
execute_process(COMMAND ${KIV} eval "? #15/03/2026#" RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT err MATCHES "year first, #yyyy-mm-dd#")
  message(FATAL_ERROR "a day-first date literal: ${err}")
endif()

# Nothing matched, nothing given, a file that cannot be read.
execute_process(COMMAND ${KIV} list zzz RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("list of nothing: status" "${rc}" "1")
expect("list of nothing: stderr" "${err}" "kiv: no operation or built-in has \"zzz\" in its name\n")
execute_process(COMMAND ${KIV} list chrw RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("list of a built-in" "${out}" "ChrW(n)  (built-in)\n")
execute_process(COMMAND ${KIV} eval RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("eval of nothing: status" "${rc}" "2")
if(NOT err MATCHES "no line")
  message(FATAL_ERROR "eval of nothing: ${err}")
endif()
execute_process(COMMAND ${KIV} run ${WORK}/missing.kiv RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("run of a missing file: status" "${rc}" "2")
expect("run of a missing file: stderr" "${err}" "kiv: cannot read ${WORK}/missing.kiv: No such file or directory\n")

# help of an operation: parameters, result with its enumeration, example.
execute_process(COMMAND ${KIV} help is_cftest RESULT_VARIABLE rc OUTPUT_VARIABLE out)
string(CONCAT wanted
       "Is_CFTest(ByRef T_Cf As String) As EnCF_Result\nClassifies a codice fiscale (EnCF_Result).\n"
       "Parameters:\n  T_Cf As String, by reference, required\n      the codice fiscale to classify\n"
       "Changes: none of its arguments\n"
       "Result: EnCF_Result, a Long: CF_IsOK = 0, CF_Num = 1, CF_Short = 2, CF_Long = 3, CF_Bad = 90, CF_Null = 99\n"
       "Example:\n  ? Is_CFTest(\"RSSMRA80A01H501\")\n  '=> Long 2\n")
expect("help of an operation" "${out}" "${wanted}")
