# Configures and builds. Sourced, not run.

# configure PRESET OPTION...: with ccache where there is one, but for line counts: what it takes from its cache has none.
# Without it every build compiles every test: several files at a time take less than half as long.
configure() {
    local preset=$1
    local -a options=(-DVANTREL_UNITE_TESTS=ON)
    shift
    if command -v ccache >/dev/null && [[ " $* " != *" -DVANTREL_COVERAGE=ON "* ]]; then
        options=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DVANTREL_UNITE_TESTS=OFF)
    fi
    cmake --preset "$preset" "${options[@]}" "$@" >/dev/null
}

# build DIRECTORY TARGET...: all targets when none is named. Quiet unless something fails.
build() {
    local directory=$1
    shift
    local -a targets=()
    (($# == 0)) || targets=(--target "$@")
    # "-k 0" would bury the first error below the others.
    NINJA_STATUS='[%f/%t] ' cmake --build "$directory" --parallel "$(nproc)" "${targets[@]}" | show_progress
}

# On a terminal the progress stands on one line; in a log only failures and the end are worth a line.
show_progress() {
    if [[ -t 1 ]]; then
        cat
    else
        awk '/^\[[0-9]+\/[0-9]+\] / { last = $0; next } /^[0-9]+ warnings? generated\.$/ { next } { print }
            END { if (last != "") print last }'
    fi
}

# run_tests DIRECTORY CTEST-OPTION...: most of a test's time is waiting, so two share a processor.
run_tests() {
    local directory=$1
    shift
    ctest --test-dir "$directory" --output-on-failure --parallel "$((2 * $(nproc)))" "$@"
}
