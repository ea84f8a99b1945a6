#!/usr/bin/env bash
# Builds and runs all that is checked here. The last line counts every check; the exit status is 0 only if
# none failed.
#
#   ./test.sh              everything
#   ./test.sh STEP...      some of: unit e2e sanitized includes format tidy
#
# unit       the release build; unit and window tests (the windows are drawn off-screen)
# e2e        the built program in a real window on an X server of its own, driven by keys and mouse
# sanitized  unit and window tests again, under the address and undefined-behaviour sanitizers
# includes   which room of src/ may include which; each header compiles alone
# format     clang-format
# tidy       clang-tidy over src/
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

steps=("$@")
[ ${#steps[@]} -gt 0 ] || steps=(unit e2e includes format tidy sanitized)
tools/setup.sh test

logs=build/test-logs
mkdir -p "$logs"
passed=0
failed=0
e2e= # the process of the end-to-end tests
trap '[ -z "$e2e" ] || kill "$e2e"' EXIT

count() { # passed failed
    passed=$((passed + $1))
    failed=$((failed + $2))
}

# Runs a command whose outcome is one check; its output is shown when it fails.
check() { # name command...
    local name=$1 log
    shift
    log=$logs/${name// /-}.log
    if "$@" >"$log" 2>&1; then
        tail -n 1 "$log"
        echo "ok $name"
        count 1 0
    else
        cat "$log"
        echo "FAIL $name"
        count 0 1
    fi
}

build() { # preset; a failed build is one failed check
    local log=$logs/build-$1.log
    if [ ! -f "build/$1/build.ninja" ] && ! cmake --preset "$1" >"$log" 2>&1; then
        cat "$log"
        echo "FAIL configure $1"
        count 0 1
        return 1
    fi
    if ! cmake --build "build/$1" >"$log" 2>&1; then
        grep -v '^\[[0-9]*/[0-9]*\] \(Building\|Linking\|Re-checking\|Automatic\)' "$log"
        echo "FAIL build $1"
        count 0 1
        return 1
    fi
    echo "built $1"
}

# Adds up the test cases in a log of ctest: "passed failed". A test program that ended without its own
# report of a failure counts as one.
count_cases() { # log
    awk '
        /^[0-9]+\/[0-9]+ Testing: / { ok = bad = 0 }
        /^\[  PASSED  \] [0-9]+ test/ { ok += $4 }
        /^\[  FAILED  \] [0-9]+ tests?, listed below/ { bad += $4 }
        /^Test Passed\./ { passed += ok > 0 ? ok : 1 }
        /^Test (Failed\.|time exceeded|not run)/ { passed += ok; failed += bad > 0 ? bad : 1 }
        END { print passed + 0, failed + 0 }' "$1"
}

run_ctest() { # preset
    local log=build/$1/Testing/Temporary/LastTest.log status=0 ok bad
    rm -f "$log"
    ctest --preset "$1" -j 2 || status=$?
    read -r ok bad < <(count_cases "$log")
    if [ $status -ne 0 ] && [ "$bad" -eq 0 ]; then bad=1; fi
    if [ $((ok + bad)) -eq 0 ]; then bad=1; fi
    echo "$1: $ok test cases passed, $bad failed"
    count "$ok" "$bad"
}

step_unit() {
    build release && run_ctest release
}

# The windows wait more than they work: the checks of the sources run beside them, and give way to them.
step_e2e() {
    build release || return 0
    tests/e2e/run >"$logs/e2e.log" 2>&1 &
    e2e=$!
}

finish_e2e() {
    [ -n "$e2e" ] || return 0
    local log=$logs/e2e.log ok bad status=0
    wait "$e2e" || status=$?
    e2e=
    cat "$log"
    ok=$(grep -c '^ok ' "$log" || true)
    bad=$(grep -c '^FAIL ' "$log" || true)
    if [ $status -ne 0 ] && [ "$bad" -eq 0 ]; then bad=1; fi
    count "$ok" "$bad"
}

step_sanitized() {
    finish_e2e
    build asan || return 0
    export UBSAN_OPTIONS=print_stacktrace=1
    export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
    export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0
    run_ctest asan
}

step_includes() {
    check "includes" nice tools/check_includes --headers
    check "include check finds planted faults" nice tools/check_includes --self-test
}

step_format() {
    local sources
    mapfile -t sources < <(find src tests tools bench -name '*.cpp' -o -name '*.h')
    check "format" nice clang-format --dry-run -Werror "${sources[@]}"
}

step_tidy() {
    build release || return 0
    check "clang-tidy" nice tools/run_tidy build/release
}

for step in "${steps[@]}"; do
    case "$step" in
    unit | e2e | sanitized | includes | format | tidy) ;;
    *)
        echo "test.sh: no step '$step'" >&2
        exit 2
        ;;
    esac
    echo "== $step"
    start=$SECONDS
    "step_$step" || true
    echo "-- $step took $((SECONDS - start)) s"
done
finish_e2e

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
