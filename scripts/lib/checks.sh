# The checks of scripts/check, one function each. Sourced, not run.

own_sources() {
    find VantrelCore Vantrel helpers tests benchmarks -name '*.[ch]pp' -o -name '*.[ch]'
}

# Files that a shell runs, whatever their names: some of the scripts are written in Python.
shell_scripts() {
    find .ci scripts data/xkb tests -type f -exec grep --files-with-matches --max-count=1 -E '^#!/.*\b(ba)?sh$' {} +
}

check_style() {
    own_sources | xargs clang-format --dry-run --Werror
    shell_scripts | xargs shellcheck
    # Tests are left out: it takes GoogleTest's macros for syntax errors.
    cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr --language=c++ \
        --std=c++20 --library=qt -I . VantrelCore Vantrel helpers benchmarks tests/desk/support tests/fakes
    check_streams
    check_javascript
    say "$(own_sources | wc -l) files"
}

# One stream of the C++ library brings its locales along: a megabyte in the resting agent.
check_streams() {
    ! grep --recursive --line-number --extended-regexp '#include <(fstream|iostream|sstream|iomanip|regex)>' \
        --exclude=EmbedIcons.cpp VantrelCore Vantrel
}

# A Node.js that is not Debian's looks for Debian's libraries nowhere, and eslint's usual report needs one that is not
# installed along with it.
check_javascript() {
    NODE_PATH=/usr/share/nodejs eslint --max-warnings 0 --report-unused-disable-directives --no-ignore --format unix \
        .eslintrc.js extensions/gnome-shell tests/unit/gnome-shell tests/desk/wayland/gnome benchmarks/wayland/gnome
}

# Each fuzz target has a corpus directory of its name.
fuzz_targets() {
    find tests/fuzz/corpus -mindepth 1 -maxdepth 1 -type d -printf '%f\n' | sort
}

replay_corpora() {
    local target
    for target in $(fuzz_targets); do
        if ! "$1/bin/$target" -runs=0 "tests/fuzz/corpus/$target" >"$1/$target.log" 2>&1; then
            tail -n 40 "$1/$target.log" >&2
            return 1
        fi
        say "$target: $(find "tests/fuzz/corpus/$target" -type f | wc -l) inputs"
    done
}

forget_line_counts() {
    find "$1" -name '*.gcda' -delete
}

# check_coverage DIRECTORY: of a build made with clang, whose line counts its own tool reads.
check_coverage() {
    gcovr --root . --gcov-executable 'llvm-cov gcov' --object-directory "$1" --filter 'VantrelCore/' \
        --filter 'Vantrel/Controller/' --exclude-throw-branches --fail-under-line 95 "$1"
}
