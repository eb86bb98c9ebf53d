#!/bin/bash
# Builds the Debian package and installs it with apt.
# Usage: ./make_app.sh [--build-only]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"

usage() {
    echo "usage: $0 [--build-only]" >&2
    exit 2
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

# Removes older packages first, so that exactly one is left.
build_package() {
    cmake --preset release >/dev/null
    cmake --build --preset release
    rm -rf build/release/package
    (cd build/release && cpack)
}

[[ $# -eq 0 || ($# -eq 1 && $1 == --build-only) ]] || usage
scripts/install-packages package
build_package
package=$(echo build/release/package/vorlane_*.deb)
scripts/check-package "$package"

if [[ ${1:-} == --build-only ]]; then
    echo "The package is $package"
    exit 0
fi
echo "Installing $package"
as_root env DEBIAN_FRONTEND=noninteractive apt-get install --yes --reinstall "./$package" </dev/null
echo "Vorlane is in the applications menu; \"vorlane --open\" starts it, \"apt remove vorlane\" removes it."
