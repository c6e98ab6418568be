#!/usr/bin/env bash
# The 64-bit DLLKiv.dll under Wine: registered in a throwaway prefix, driven
# by VBScript and by C++ clients (*.exe), unregistered. Exit 77 (skipped)
# when Wine or the DLL is absent.
#   automation.sh DLL SCRIPT|CLIENT.exe...
set -uo pipefail
dll=$(realpath -m "$1"); shift
scripts=(); for s in "$@"; do scripts+=("$(realpath -m "$s")"); done
if ! command -v wine >/dev/null || [ ! -f "$dll" ]; then
  echo "skipped: needs wine and $dll (./dev windows)"; exit 77
fi
work=$(mktemp -d)
export WINEPREFIX=$work/pfx WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY
cleanup() { wineserver -k 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
fail() { echo "FAIL: $*"; exit 1; }
source "$(dirname "${BASH_SOURCE[0]}")/wine.sh"

wineboot -i >/dev/null 2>&1 || fail "wineboot"
# Windows without a screen: the null display driver (no X here).
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 || fail "null display driver"
wineserver -w  # the desktop started by wineboot takes the driver only when started again
cp "$dll" "$work/DLLKiv.dll"
cd "$work"
wine regsvr32 /s DLLKiv.dll || fail "regsvr32 exit $?"
for key in 'HKCR\DLLKiv.Cl_KIV\Clsid' 'HKCR\DLLKiv.Col_KIV\Clsid'; do
  wine reg query "$key" >/dev/null 2>&1 || fail "not registered: $key"
done

status=0
for script in "${scripts[@]}"; do
  name=$(basename "$script")
  cp "$script" "$work/$name"
  # Messages go to a file instead of the screen; the clock is pinned.
  rm -f "$work/msgbox.log"
  run=(wine cscript //nologo "$name")
  [[ $name == *.exe ]] && run=(wine "$name")
  out=$(KIV_MSGBOX_LOG="Z:${work//\//\\}\\msgbox.log" KIV_NOW="2026-03-15 14:05:09" wine_run "${run[@]}")
  sentinel=$(grep -c '^[A-Z]*-OK$' <<<"$out")
  if grep -q '^FAIL' <<<"$out" || [ "$sentinel" -ne 1 ]; then
    echo "$out"; echo "FAIL: $name (no sentinel or failed checks)"; status=1
  else
    echo "ok: $name"
  fi
done

# Unregistration leaves nothing of ours behind.
wine regsvr32 /s /u DLLKiv.dll || fail "regsvr32 /u exit $?"
for key in 'HKCR\DLLKiv.Cl_KIV' 'HKCR\DLLKiv.Col_KIV' \
           'HKCR\CLSID\{f566bf98-db4c-48d2-b8a4-029f99ed4d01}' 'HKCR\CLSID\{ab55dc51-a7e8-44d9-8d0e-b043e97b5c44}' \
           'HKCR\TypeLib\{521b08ba-b2b5-4647-bf8a-4ae17f2f7400}' \
           'HKCR\Interface\{cf06cfad-5d33-4f8d-9e5c-79324a78e0db}' 'HKCR\Interface\{ec922e83-9dde-4eaa-a50e-c508db47a5f9}'; do
  if wine reg query "$key" >/dev/null 2>&1; then echo "FAIL: left after unregistering: $key"; status=1; fi
done
exit $status
