# What `run` and `test` share: messages, the Debian packages, the build. Sourced by bash.

say() { printf '%s: %s\n' "$program" "$*"; }
complain() { printf '%s: %s\n' "$program" "$*" >&2; }
die() {
    complain "$*"
    exit 1
}

# The packages of the named sections of the one list.
packages_of() {
    awk -v wanted=" $* " '
        /^#/ || /^$/ { next }
        /^\[/ { gsub(/[][]/, ""); section = $0; next }
        index(wanted, " " section " ") { print }' "$source_dir/cmake/packages.txt"
}

missing_packages() {
    local package
    for package in $(packages_of "$@"); do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

# Installs what is missing of the named sections; does nothing, and says nothing, when all is there.
ensure_packages() {
    local missing log
    command -v dpkg-query >/dev/null || die "this needs Debian's dpkg; on another system install what cmake/packages.txt lists, by its names there"
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
        die "these Debian packages are missing, and there is neither root nor sudo to install them: $missing"
    say "installing Debian packages: $missing"
    log=$(mktemp)
    # shellcheck disable=SC2086
    if ! { as_root apt-get update && as_root apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1; then
        tail -n 15 "$log" >&2
        die "apt-get failed (its whole output: $log); mend that, or install by hand: apt-get install $missing"
    fi
    rm -f "$log"
}

# build PRESET [TARGET ...]: configures once, builds, and shows the compiler's output only when it fails.
build() {
    local preset=$1 log start=$SECONDS
    shift
    mkdir -p "$source_dir/build"
    log=$source_dir/build/$preset.log
    if [ ! -f "$source_dir/build/$preset/build.ninja" ]; then
        say "configuring preset $preset"
        (cd "$source_dir" && cmake --preset "$preset") >"$log" 2>&1 || {
            cat "$log" >&2
            die "cmake could not configure preset $preset; its output is above and in $log"
        }
    fi
    say "building preset $preset${*:+: $*}"
    (cd "$source_dir" && cmake --build --preset "$preset" ${*:+--target "$@"}) >"$log" 2>&1 || {
        grep -v '^\[[0-9]*/[0-9]*\] [A-Z]' "$log" | tail -n 60 >&2
        die "the build of preset $preset failed; the compiler's output is above and in $log"
    }
    [ $((SECONDS - start)) -lt 3 ] || say "built preset $preset in $((SECONDS - start)) s"
}
