# Counting of checks for scripts/test. A program that dies counts as one failed check.

passed=0
failed=0
skipped=0

# check NAME COMMAND...: one check; its output is shown only when it fails.
check() {
    local name=$1 log
    shift
    log=$(mktemp)
    if ("$@") >"$log" 2>&1 </dev/null; then
        passed=$((passed + 1))
        say "passed: $name"
    else
        failed=$((failed + 1))
        say "FAILED: $name"
        tail -n 80 "$log" >&2
    fi
    rm -f "$log"
}

# count_gtest NAME EXIT-STATUS XML LOG: adds what a GoogleTest program reported.
count_gtest() {
    local name=$1 status=$2 xml=$3 log=$4 tests=0 failures=0 skips=0 errors=0
    if [[ -s $xml ]]; then
        tests=$(sed -n 's/.*<testsuites tests="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
        failures=$(sed -n 's/.*<testsuites .*failures="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
        skips=$(grep -c '<skipped' "$xml" || true)
    fi
    # A crash, or a leak found at exit, is a failure that no test case reports.
    ((status != 0 && failures == 0)) && errors=1
    passed=$((passed + tests - failures - skips))
    failed=$((failed + failures + errors))
    skipped=$((skipped + skips))
    if ((status == 0)); then
        say "passed: $name ($tests tests, $skips skipped)"
        grep -A1 '^\[  SKIPPED \]\|Skipped$' "$log" | grep -v '^--' | head -n 6 >&2 || true
    else
        say "FAILED: $name (exit status $status)"
        grep -v '^\[ RUN\|^\[       OK' "$log" | tail -n 100 >&2
    fi
}

# run_gtest PROGRAM
run_gtest() {
    local name log xml status=0
    name=$(basename "$1")
    log=$(mktemp)
    xml=$(mktemp -u).xml
    timeout 300 "$1" --gtest_output="xml:$xml" >"$log" 2>&1 </dev/null || status=$?
    count_gtest "$name" "$status" "$xml" "$log"
    rm -f "$log" "$xml"
}

# run_gtest_in_wine PROGRAM: in a desktop of its own, so that windows get focus and keyboard.
run_gtest_in_wine() {
    local name log xml status=0
    name=$(basename "$1" .exe)
    log=$(mktemp)
    xml="$run_dir/$name.xml"
    timeout 300 wine "$1" --gtest_output="xml:$(windows_path "$xml")" >"$log" 2>&1 </dev/null ||
        status=$?
    count_gtest "$name (Wine)" "$status" "$xml" "$log"
    rm -f "$log"
}

check_format() {
    git ls-files -co --exclude-standard -- '*.cpp' '*.h' | xargs -r clang-format --dry-run -Werror
}

# run_fuzzer PROGRAM: a short run with a fixed seed and a fixed time.
run_fuzzer() {
    local corpus seeds
    corpus=$(mktemp -d)
    seeds="$root/fuzz/seeds/$(basename "$1")"
    "$1" -max_total_time="${BRIMWAVE_FUZZ_SECONDS:-10}" -seed=1 -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$corpus/" "$corpus" $([[ -d $seeds ]] && echo "$seeds")
    rm -rf "$corpus"
}

report_and_exit() {
    ((skipped)) && say "$skipped skipped"
    end_started
    echo "$passed passed, $failed failed"
    ((failed == 0)) && exit 0
    exit 1
}
