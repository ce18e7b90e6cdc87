# Shared by the scripts beside it, which source it first.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# macOS has bash 3.2 and BSD's tools; what runs there keeps to them.
is_macos() {
    [ "$(uname)" = Darwin ]
}

# fail CAUSE: one line that names what went wrong, and the end.
fail() {
    echo "script/$(basename "$0"): $*" >&2
    exit 1
}

# step WHAT COMMAND...: runs a command with its output in a log; on failure shows the log's end and
# names the cause in one last line.
step() {
    local what=$1 log
    shift
    mkdir -p build/logs
    log="build/logs/${what// /-}.log"
    echo "==> $what"
    "$@" >"$log" 2>&1 && return
    tail -n 40 "$log" >&2
    local cause
    cause=$(grep -m1 -E '(^|[^a-z])(error|Error|E|FATAL):|CMake Error|^FAILED' "$log" || tail -n 1 "$log")
    fail "$what failed: $cause (all of it: $log)"
}

# as_root COMMAND...: through sudo where the person is not root.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo -- "$@"
    else
        fail "needs root or sudo for: $*"
    fi
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache CMAKE_OBJCXX_COMPILER_LAUNCHER=ccache
    fi
    if is_macos; then
        # The presets for macOS leave the generator to CMake, whose default builds one file at a time.
        export CMAKE_BUILD_PARALLEL_LEVEL
        CMAKE_BUILD_PARALLEL_LEVEL=$(sysctl -n hw.ncpu)
    fi
    step "configure $preset" cmake --preset "$preset"
    step "build $preset" cmake --build --preset "$preset" "${@/#/--target=}"
}

# make_packages: a release and its Debian packages, in build/release/packages.
make_packages() {
    rm -rf build/release/packages
    build release
    step "make packages" cmake --build --preset release --target package
}
