#!/usr/bin/env bash
# The conformance files through the 64-bit DLLKiv.dll under Wine: each file is
# translated to VBScript by `kiv vbs`, run by cscript in one throwaway prefix,
# and compared case by case (inside the script) with its expected lines.
# Fails when a case differs or is skipped without a line in the known list,
# when a listed case passes (the list must stay true), when a script ends
# without its sentinel, or when fewer than 94.6% (the aim: 98%) of the cases
# run through the DLL pass. Exit 77 (skipped) when Wine, kiv or the DLL is absent.
#   conformance.sh KIV DLL KNOWN_DIFFERENCES FILE.kiv...
set -uo pipefail
kiv=$(realpath -m "$1"); dll=$(realpath -m "$2"); known=$(realpath -m "$3"); shift 3
files=(); for f in "$@"; do files+=("$(realpath -m "$f")"); done
if ! command -v wine >/dev/null || [ ! -f "$dll" ] || [ ! -x "$kiv" ]; then
  echo "skipped: needs wine, $kiv and $dll (./dev windows)"; exit 77
fi
work=$(mktemp -d)
export WINEPREFIX=$work/pfx WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" LANG=C
# Unix file names in UTF-8: under the C locale Wine cannot make a name with "§" or "è".
export LC_CTYPE=C.UTF-8
unset DISPLAY LC_ALL
# The machine's facts pinned as ctest pins them for kiv (CMakeLists.txt).
export KIV_PIN_APP=kiv "KIV_PIN_WINVER=Windows 10 10.0.19045" KIV_PIN_WINBIT=64 KIV_PIN_PCNAME=UFFICIO1 \
  KIV_PIN_USERNAME=mario KIV_PIN_IP=192.168.1.20
cleanup() { wineserver -k 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
fail() { echo "FAIL: $*"; exit 1; }
source "$(dirname "${BASH_SOURCE[0]}")/wine.sh"

wineboot -i >/dev/null 2>&1 || fail "wineboot"
# Windows without a screen: the null display driver (no X here).
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 || fail "null display driver"
# Italian formats with English messages, as the component's own texts: what
# VBScript itself turns into text (concatenation) comes out as kiv's does.
for setting in sDecimal=, sThousand=. sShortDate=dd/MM/yyyy sTimeFormat=HH:mm:ss; do
  wine reg add 'HKCU\Control Panel\International' /v "${setting%%=*}" /d "${setting#*=}" /f >/dev/null 2>&1 ||
    fail "locale setting $setting"
done
wineserver -w  # the desktop started by wineboot takes the settings when started again
cp "$dll" "$work/DLLKiv.dll"
cd "$work"
wine regsvr32 /s DLLKiv.dll || fail "regsvr32 exit $?"

# "file.kiv:line  reason" lines; '#' starts a comment.
declare -A listed=()
while IFS= read -r entry; do
  entry=${entry%%#*}; key=${entry%%[[:space:]]*}
  [ -n "$key" ] && listed[$key]=1
done <"$known"

status=0 pass=0 diff=0 skip=0
declare -A seen=()
for file in "${files[@]}"; do
  name=$(basename "$file" .kiv)
  "$kiv" vbs "$file" >"$name.vbs" || { echo "FAIL: $name: kiv vbs"; status=1; continue; }
  rm -f msgbox.log
  out=$(KIV_MSGBOX_LOG="Z:${work//\//\\}\\msgbox.log" KIV_NOW="2026-03-15 14:05:09" \
        wine_run wine cscript //nologo "$name.vbs")
  p=0 d=0 s=0
  while IFS= read -r line; do
    read -r verdict number rest <<<"$line"
    key="$name.kiv:$number"
    case $verdict in
      PASS) p=$((p + 1))
            if [ -n "${listed[$key]:-}" ]; then echo "FAIL: $key passes but is listed in $(basename "$known")"; status=1; fi ;;
      DIFF|SKIP)
            [ "$verdict" = DIFF ] && d=$((d + 1)) || s=$((s + 1))
            if [ -z "${listed[$key]:-}" ]; then echo "FAIL: $name.kiv:$number $verdict $rest"; status=1; fi ;;
      *) continue ;;
    esac
    seen[$key]=1
  done <<<"$out"
  # The sentinel carries the number of cases the script met: all must be reported.
  cases=$(sed -n 's/^VBSCONF-OK \([0-9]*\)$/\1/p' <<<"$out")
  if [ -z "$cases" ] || [ "$cases" -ne $((p + d + s)) ]; then
    echo "$out" | tail -5; echo "FAIL: $name: the script stopped early (no sentinel)"; status=1
  fi
  printf '%-28s %4d passed %4d differ %4d not translated\n' "$name" "$p" "$d" "$s"
  pass=$((pass + p)) diff=$((diff + d)) skip=$((skip + s))
done

total=$((pass + diff + skip)) through=$((pass + diff))
echo "cases: $total; through the DLL: $through, passed $pass, differ $diff; not translated: $skip"
if [ "$through" -gt 0 ]; then
  pct=$((pass * 10000 / through))
  printf 'passed through the DLL: %d.%02d%%\n' $((pct / 100)) $((pct % 100))
  # The aim is 98%; today's level (94.6%) is the floor, so that nothing
  # slips back while the differences still listed are worked off.
  [ "$pct" -ge 9460 ] || { echo "FAIL: under 94.6% of the cases through the DLL pass"; status=1; }
  [ "$pct" -ge 9800 ] || echo "note: under the 98% aimed at"
fi
wine regsvr32 /s /u DLLKiv.dll || { echo "FAIL: regsvr32 /u exit $?"; status=1; }
exit $status
