# Configures and builds. Sourced, not run.

# configure PRESET OPTION...: with ccache where there is one, but for line counts: what it takes from its cache has none.
configure() {
    local preset=$1
    local -a options=()
    shift
    if command -v ccache >/dev/null && [[ " $* " != *" -DVANTREL_COVERAGE=ON "* ]]; then
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
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

# run_tests DIRECTORY CTEST-OPTION...
run_tests() {
    local directory=$1
    shift
    ctest --test-dir "$directory" --output-on-failure --parallel "$(nproc)" "$@"
}
