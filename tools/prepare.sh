# Sourced by run, test and .ci/run: the packages, the build, the application folder in build/app.

# install_packages LIST ...: the Debian packages that the lists name and the machine lacks.
install_packages() {
    local missing=()
    while read -r package; do
        [[ -z $package || $package == \#* ]] && continue
        [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *" installed" ]] || missing+=("$package")
    done < <(cat "$@")
    [[ ${#missing[@]} -eq 0 ]] && return
    echo "Installing: ${missing[*]}" >&2
    local as_root=()
    [[ $(id -u) -eq 0 ]] || as_root=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build [TARGET ...]: everything without a target. Warnings stop the build when WARNINGS_AS_ERRORS=ON.
build() {
    local targets=()
    [[ $# -eq 0 ]] || targets=(--target "$@")
    cmake --preset release -D CMAKE_COMPILE_WARNING_AS_ERROR="${WARNINGS_AS_ERRORS:-OFF}" >build.log 2>&1 || { cat build.log >&2; return 1; }
    cmake --build --preset release "${targets[@]}" >build.log 2>&1 || { tail -n 60 build.log >&2; return 1; }
    rm -f build.log
}

# Lays the application folder down in build/app; store and screen settings of earlier runs stay.
stage() {
    cmake --install build/release --prefix "$PWD/build/app" >/dev/null
}
