#!/usr/bin/env bash
# Checks the C++ sources with the two programs of LLVM 14, whose opinions differ from version to version.
#   check_style.sh format        the form of every file
#   check_style.sh tidy                   .clang-tidy's checks over what has changed since the last release
#   check_style.sh tidy --within SECONDS  the same, the newest changes first, until the time is up
#   check_style.sh tidy --all             over everything
#   check_style.sh tidy FILE...           over these
set -euo pipefail
cd "$(dirname "$0")/.."

# What this system can compile.
here=('src/*.cpp' 'src/*.h' ':!src/windows')

# The files to look at for what differs from the last release, or from the beginning; the newest
# changes first. A header is looked at through a file that includes it, its own if it has one.
changed() {
  local since file
  since=$(git describe --tags --match 'v*' --abbrev=0 2>/dev/null || git rev-list --max-parents=0 HEAD | tail -1)
  git log --format= --name-only --diff-filter=d "$since..HEAD" -- "${here[@]}" |
    while read -r file; do
      [[ -f $file ]] || continue
      case $file in
        *.cpp) echo "$file" ;;
        *) if [[ -f ${file%.h}.cpp ]]; then echo "${file%.h}.cpp"
           else git grep -lF "#include \"${file#src/}\"" -- 'src/*.cpp' | head -1 || true; fi ;;
      esac
    done | awk '!seen[$0]++'
}

# What was looked at is written to the file `looked`.
tidy_before() {
  local deadline=$1 file=$2
  ((EPOCHSECONDS < deadline)) || return 0
  echo "$file" >> "$looked"
  # g++'s own warnings are unknown to clang.
  clang-tidy-14 -p build/tidy --quiet --extra-arg=-Wno-unknown-warning-option "$file"
}
export -f tidy_before

case ${1:-} in
  format)
    git ls-files '*.cpp' '*.h' | xargs -d '\n' -P "$(nproc)" -n 32 clang-format-14 --dry-run --Werror
    ;;
  tidy)
    shift
    cmake --preset tidy >/dev/null
    deadline=$((EPOCHSECONDS + 86400))
    if [[ ${1:-} == --within ]]; then
      deadline=$((EPOCHSECONDS + $2))
      shift 2
    fi
    if [[ ${1:-} == --all ]]; then
      mapfile -t files < <(git ls-files "${here[@]}" | grep '\.cpp$')
    elif [[ $# -gt 0 ]]; then
      files=("$@")
    else
      mapfile -t files < <(changed)
    fi
    ((${#files[@]} > 0)) || exit 0
    looked=$(mktemp)
    export looked
    status=0
    printf '%s\n' "${files[@]}" |
      xargs -d '\n' -P "$(nproc)" -I{} bash -c 'tidy_before "$@"' _ "$deadline" {} || status=1
    echo "check_style: looked at $(wc -l < "$looked") of ${#files[@]} files"
    rm "$looked"
    exit $status
    ;;
  *)
    echo "usage: check_style.sh format | tidy [--within SECONDS] [--all | FILE...]" >&2
    exit 2
    ;;
esac
