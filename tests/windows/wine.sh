# Sourced by the Wine tests. Under load Wine sometimes fails to start a
# program at all: nothing is printed, or only its launcher's message
# ("Application could not be started ... ShellExecuteEx failed"). Such a run
# said nothing about the DLL, so it is tried again (up to three times); a
# program that started and then failed is reported at once.
#   out=$(wine_run wine cscript //nologo file.vbs)
wine_run() {
  local try out
  for try in 1 2 3; do
    out=$("$@" 2>&1 | tr -d '\r')
    if [ -n "$out" ] && ! grep -q -e '^Application could not be started' -e '^ShellExecuteEx failed' <<<"$out"; then
      break
    fi
    echo "note: Wine did not start $* (try $try)" >&2
    sleep 1
  done
  printf '%s\n' "$out"
}
