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
    without_services "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# without_services COMMAND ...: packages of servers set a service of the machine up and start it when they are installed.
# The tests start servers of their own, so both are kept from happening, and the settings are left as found.
without_services() (
    local as_root=() made=()
    [[ $(id -u) -eq 0 ]] || as_root=(sudo)
    trap '[[ ${#made[@]} -eq 0 ]] || "${as_root[@]}" rm -f "${made[@]}"' EXIT
    put() {  # FILE MODE CONTENT, where there is no such file.
        [[ ! -e $1 ]] || return 0
        "${as_root[@]}" mkdir -p "${1%/*}"
        made+=("$1")
        printf '%b' "$3" | "${as_root[@]}" tee "$1" >/dev/null
        "${as_root[@]}" chmod "$2" "$1"
    }
    put /usr/sbin/policy-rc.d 755 '#!/bin/sh\nexit 101\n'
    put /etc/postgresql-common/createcluster.d/no-cluster.conf 644 'create_main_cluster = false\n'
    "$@"
)

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
