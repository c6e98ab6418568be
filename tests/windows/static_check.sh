#!/usr/bin/env bash
# A DLLKiv.dll checked without running it (the 32-bit one needs 32-bit Wine):
# its four entry points exported, only system DLLs imported, the type
# library as resource 1. Exit 77 (skipped) when the DLL or the tools are absent.
#   static_check.sh DLL TRIPLE
set -uo pipefail
dll=$1 triple=$2
if [ ! -f "$dll" ] || ! command -v "$triple-objdump" >/dev/null; then
  echo "skipped: needs $dll (./dev windows) and $triple-objdump"; exit 77
fi
status=0
dump=$("$triple-objdump" -p "$dll")
for entry in DllGetClassObject DllCanUnloadNow DllRegisterServer DllUnregisterServer; do
  grep -Eq "\] +$entry\$" <<<"$dump" || { echo "FAIL: $entry not exported"; status=1; }
done
system='^(ADVAPI32|GDI32|KERNEL32|msvcrt|OLEAUT32|ole32|SHELL32|USER32)\.dll$'
for imported in $(echo "$dump" | sed -n 's/^\tDLL Name: //p'); do
  grep -Eiq "$system" <<<"$imported" || { echo "FAIL: imports $imported"; status=1; }
done
resources=$("$triple-windres" -i "$dll" -O rc 2>/dev/null | tr -d '\r')
grep -A2 'Type: "TYPELIB"' <<<"$resources" | grep -q 'Name: 1\.' ||
  { echo "FAIL: no type library as resource 1"; status=1; }
[ $status -eq 0 ] && echo "ok: $dll"
exit $status
