#!/bin/bash
# Builds the Debian package, with its source package, in build/package/ and installs it with apt.
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

# Builds in a copy of the tree, since dpkg-buildpackage leaves its results in and beside the tree.
build_package() {
    local version
    version=$(dpkg-parsechangelog --show-field Version)
    version=${version%-*}
    rm -rf build/package
    mkdir -p "build/package/vorlane-$version"
    tar --create --exclude-vcs --exclude=./build --exclude=./out . |
        tar --extract --directory "build/package/vorlane-$version"
    cd build/package
    tar --create --gzip --exclude="vorlane-$version/debian" --file "vorlane_$version.orig.tar.gz" "vorlane-$version"
    cd "vorlane-$version"
    dpkg-buildpackage --no-sign
}

[[ $# -eq 0 || ($# -eq 1 && $1 == --build-only) ]] || usage
scripts/install-packages package
(build_package)
package=$(echo build/package/vorlane_*.deb)
scripts/check-package "$package"

if [[ ${1:-} == --build-only ]]; then
    echo "The package is $package"
    exit 0
fi
echo "Installing $package"
as_root env DEBIAN_FRONTEND=noninteractive apt-get install --yes --reinstall "./$package" </dev/null
echo "Vorlane is in the applications menu; \"vorlane --open\" starts it, \"apt remove vorlane\" removes it."
