# Sourced by run and test: the packages, the build, the application folder in build/app.

install_packages() {
    local missing=()
    while read -r package; do
        [[ -z $package || $package == \#* ]] && continue
        [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *" installed" ]] || missing+=("$package")
    done < packages.txt
    [[ ${#missing[@]} -eq 0 ]] && return
    echo "Installing: ${missing[*]}" >&2
    local as_root=()
    [[ $(id -u) -eq 0 ]] || as_root=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build [TARGET ...]: everything without a target.
build() {
    local targets=()
    [[ $# -eq 0 ]] || targets=(--target "$@")
    cmake --preset release >build.log 2>&1 || { cat build.log >&2; return 1; }
    cmake --build --preset release "${targets[@]}" >build.log 2>&1 || { tail -n 60 build.log >&2; return 1; }
    rm -f build.log
}

# Lays the application folder down in build/app; store and screen settings of earlier runs stay.
stage() {
    cmake --install build/release --prefix "$PWD/build/app" >/dev/null
}
