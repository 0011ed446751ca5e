# What ./check checks besides the tests themselves. To be sourced by bash from the top folder of the project, after
# setup.sh.

jobs=$(nproc)

# timed FUNCTION [ARGUMENT...]: says afterwards how long it took.
timed() {
    local begin=$SECONDS
    "$@"
    printf '   (%s: %d s)\n' "$*" $((SECONDS - begin))
}

tracked() { git ls-files -z -- "$@"; }

check_format() {
    note "Format of the sources"
    tracked '*.cpp' '*.h' | xargs -0 clang-format-14 --dry-run --Werror
}

check_data_files() {
    note "Desktop entry and software description"
    desktop-file-validate data/*.desktop
    appstreamcli validate --no-net data/*.metainfo.xml
}

# A test that no target names would pass by never being run.
check_every_test_is_built() {
    note "Every test is built"
    local source built forgotten=0
    mapfile -t built < <(find build/release -name compile_commands.json -o -name 'unity_*.cxx')
    while IFS= read -r -d '' source; do
        if ! grep -qF "/$source\"" "${built[@]}"; then
            echo "No target builds $source"
            forgotten=1
        fi
    done < <(tracked 'tests/*.cpp')
    return $forgotten
}

# Over all sources of the program and its tools, as the address sanitizer's build takes them: many at once, since most of
# the work is the headers. It does not like these precompiled, and need not look at templates of theirs that nobody uses.
# What moc makes is not ours.
check_tidy() {
    note "clang-tidy"
    mkdir -p build/asan/tidy
    sed 's/ -Xclang -include[^ ]* -Xclang [^ ]*//g' build/asan/compile_commands.json > build/asan/tidy/compile_commands.json
    sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' build/asan/compile_commands.json |
        grep -E "^$PWD/(build/asan/)?(src|tools)/" | grep -vE 'mocs_compilation|qrc_|_headers\.' | tr '\n' '\0' |
        xargs -0 -n 1 -P "$jobs" clang-tidy-14 --quiet -p build/asan/tidy --header-filter="^$PWD/(src|tools)/" \
            --extra-arg=-Wno-everything --extra-arg=-fdelayed-template-parsing 2>/dev/null
}

# tests_of PRESET [CTEST'S CHOICE...]: their names, which are those of their targets too.
tests_of() {
    local preset=$1
    shift
    ctest --preset "$preset" -N "$@" | sed -n 's/^ *Test *#[0-9]*: //p'
}

# pass PRESET JOBS [CTEST'S CHOICE...]: what listens in real time comes first and by itself, for it wants the processor when
# it wants it, and mostly waits.
pass() {
    local preset=$1 lanes=$2
    shift 2
    note "Testing: $preset"
    ctest --preset "$preset" --label-regex real-time --output-on-failure -j "$((2 * jobs))"
    ctest --preset "$preset" "$@" --output-on-failure -j "$lanes"
}

# test_under_sanitizers PRESET LABELS WITHOUT: builds the tests with these labels and without that one, and what they
# need; nothing else of the program.
test_under_sanitizers() {
    local preset=$1 tests
    configure "$preset"
    mapfile -t tests < <(tests_of "$preset" --label-regex "$2" --label-exclude "$3")
    build "$preset" "${tests[@]}"
    pass "$preset" "$jobs" --label-regex "$2" --label-exclude "real-time|$3"
}
