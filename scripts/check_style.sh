#!/usr/bin/env bash
# Checks the C++ sources with the two programs of LLVM 14, whose opinions differ from version to version.
#   check_style.sh format        the form of every file
#   check_style.sh tidy          .clang-tidy's checks over what has changed since the last release
#   check_style.sh tidy --all    over everything
#   check_style.sh tidy FILE...  over these
# What has changed since the last release is bounded: the most recently changed files go first.
set -euo pipefail
cd "$(dirname "$0")/.."
most=10

# The .cpp files that differ from the last release, or from the beginning; the newest changes first.
changed() {
  local since
  since=$(git describe --tags --match 'v*' --abbrev=0 2>/dev/null || git rev-list --max-parents=0 HEAD | tail -1)
  git log --format= --name-only --diff-filter=d "$since..HEAD" -- 'src/*.cpp' | awk '!seen[$0]++' |
    while read -r file; do [[ ! -f $file ]] || echo "$file"; done
}

case ${1:-} in
  format)
    git ls-files '*.cpp' '*.h' | xargs -d '\n' -P "$(nproc)" -n 32 clang-format-14 --dry-run --Werror
    ;;
  tidy)
    shift
    [[ -f build/release/compile_commands.json ]] || cmake --preset release >/dev/null
    if [[ ${1:-} == --all ]]; then
      mapfile -t files < <(git ls-files 'src/*.cpp')
    elif [[ $# -gt 0 ]]; then
      files=("$@")
    else
      mapfile -t files < <(changed)
      if ((${#files[@]} > most)); then
        echo "check_style: ${#files[@]} files have changed; these are the newest $most (--all looks at all)"
        files=("${files[@]:0:most}")
      fi
    fi
    ((${#files[@]} > 0)) || exit 0
    # g++'s own warnings are unknown to clang.
    printf '%s\n' "${files[@]}" |
      xargs -d '\n' -P "$(nproc)" -n 1 clang-tidy-14 -p build/release --quiet --extra-arg=-Wno-unknown-warning-option
    ;;
  *)
    echo "usage: check_style.sh format | tidy [--all | FILE...]" >&2
    exit 2
    ;;
esac
