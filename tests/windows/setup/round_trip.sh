#!/usr/bin/env bash
# Installs the add-in in a Windows of its own, loads it, uninstalls it, and looks for what is left.
#   round_trip.sh WINE_SCRIPT SETUP_EXE LOADER_EXE FOLDER
set -euo pipefail

wine_script=$1 setup=$2 loader=$3 folder=$4
rm -rf "$folder"
mkdir -p "$folder"
trap 'echo "FAILED at line $LINENO" >&2' ERR
export WINEPREFIX=$folder/wine USER=${USER:-$(id -un)}
wine() { "$wine_script" "$WINEPREFIX" "$@"; }
# What was started may go on when it has returned.
settle() { wineserver -w; }
fail() { echo "FAILED: $*" >&2; exit 1; }

# But for what Wine writes for itself, and the key of a user's classes, which Windows always has.
entries() {
  wine reg export 'HKCU\Software' "Z:${folder//\//\\}\\$1.reg" /y >/dev/null
  settle
  iconv -f utf-16 -t utf-8 "$folder/$1.reg" | tr -d '\r' | grep -v -e '^$' -e '\\Software\\Wine\\' -e '\\Software\\Classes]$'
}
files() { find "$WINEPREFIX/drive_c" -path '*/Temp/*' -prune -o -print | sort; }
# A key's value; nothing where it is not there.
value() { wine reg query "$1" "${@:2}" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_[A-Z_]* *//p'; }

wine wineboot --init >/dev/null 2>&1
settle
entries before > "$folder/entries-before"
files > "$folder/files-before"

wine "$setup" /S
settle
class='CLSID\{6C4F0B52-9E1D-4B0B-8F0A-5D0F3B7C2000}\InprocServer32'
loaded=$(wine "$loader" | tr -d '\r')
[[ $loaded == *'\Programs\Corvane Lumenfold 2000\64-bit\LF2000.dll' ]] || fail "the loader says: $loaded"
[[ $(value "HKCU\\Software\\Classes\\Wow6432Node\\$class" /ve) == *'\32-bit\LF2000.dll' ]] ||
  fail "32-bit programs do not find the add-in"
addin='HKCU\Software\Microsoft\Office\PowerPoint\Addins\LF2000.Connect'
[[ $(value "$addin" /v LoadBehavior) == 0x3 ]] || fail "PowerPoint would not load it at its start"
installed="$WINEPREFIX/drive_c/users/$USER/AppData/Local/Programs/Corvane Lumenfold 2000"
for file in 64-bit/LF2000.dll 32-bit/LF2000.dll help.chm help/index.html licences.txt uninstall.exe; do
  [[ -f $installed/$file ]] || fail "$file is not installed"
done
link=$(find "$WINEPREFIX/drive_c" -name 'Help.lnk')
[[ -n $link ]] || fail "no entry of the start menu"
strings -e l "$link" | grep -q 'help\.chm$' || fail "the start menu does not open the help"
echo "a log" > "$installed/64-bit/errors.txt"

# Once more over it, as for a newer version.
wine "$setup" /S
settle

wine "$installed/uninstall.exe" /S
settle
if wine "$loader" >/dev/null; then fail "the add-in can still be loaded"; fi
entries after > "$folder/entries-after"
files > "$folder/files-after"
diff "$folder/files-before" "$folder/files-after" || fail "files are left"
diff "$folder/entries-before" "$folder/entries-after" || fail "entries of the registry are left"
rm -rf "$folder"
