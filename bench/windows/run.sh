#!/usr/bin/env bash
# Calls per second of FmtNum late-bound under Wine: from VBScript (cscript)
# and from the C++ IDispatch client, the 64-bit DLL registered in a
# throwaway prefix. A benchmark, not a test: it prints figures.
#   bench/windows/run.sh [CALLS]     (after ./dev windows)
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
calls=${1:-200000}
work=$(mktemp -d)
export WINEPREFIX=$work/pfx WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY
trap 'wineserver -k 2>/dev/null; rm -rf "$work"' EXIT
wineboot -i >/dev/null 2>&1
cp "$root/build-win64/DLLKiv.dll" "$root/build-win64/dispatch_client.exe" "$root/bench/windows/fmtnum_bench.vbs" "$work/"
cd "$work"
wine regsvr32 /s DLLKiv.dll
wine cscript //nologo fmtnum_bench.vbs "$calls" | tr -d '\r'
wine dispatch_client.exe bench "$calls" | tr -d '\r'
