#!/usr/bin/env bash
# A DLL of the add-in exports the names that COM looks up, as they are, imports nothing that is not on every Windows,
# and is small enough not to delay a program's start.
#   check_dll.sh OBJDUMP DLL
set -euo pipefail

objdump=$1 dll=$2
status=0
fail() { echo "$dll: $*" >&2; status=1; }

headers=$("$objdump" -p "$dll")
exports=$(sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' <<<"$headers" | awk '/^\t\[/ {print $NF}' | sort | tr '\n' ' ')
wanted="DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer "
[[ $exports == "$wanted" ]] || fail "exports '$exports' instead of '$wanted'"

imports=$(sed -n 's/^\tDLL Name: //p' <<<"$headers" | tr '[:upper:]' '[:lower:]' | sort -u)
[[ -n $imports ]] || fail "imports nothing at all"
system=(advapi32 comctl32 comdlg32 gdi32 kernel32 msvcrt ole32 oleaut32 shell32 user32 windowscodecs)
foreign=$(grep -vxF -f <(printf '%s.dll\n' "${system[@]}") <<<"$imports" || true)
[[ -z $foreign ]] || fail "imports ${foreign//$'\n'/ }"

# Three megabytes.
size=$(stat -c %s "$dll")
((size <= 3 << 20)) || fail "has $size bytes"
exit $status
