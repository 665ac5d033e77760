#!/usr/bin/env bash
# What bash completes, by the script that the program writes.
#   completion.sh BUILD
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$1/lumenfold" manual "$folder"
# shellcheck disable=SC1091 # made by the program
source "$folder/completion/lumenfold"
failed=0

# expect "WHAT IT COMPLETES TO" WORD...: the last word is what the cursor stands behind.
expect() {
  local wanted=$1
  shift
  COMP_WORDS=(lumenfold "$@")
  COMP_CWORD=$#
  _lumenfold
  if [[ ${COMPREPLY[*]} != "$wanted" ]]; then
    echo "lumenfold $*: completes to '${COMPREPLY[*]}', not '$wanted'" >&2
    failed=1
  fi
}
expect "show shapes" sh
expect "--kiosk" show deck.pptx --ki
expect "" show deck.p
expect "test tables" connection deck.pptx t
expect "" connection t
expect "add" screen a
expect "--header" connection deck.pptx add --hea
expect "--grid" link deck.pptx --gr
expect "" manu
exit "$failed"
