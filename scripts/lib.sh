# Sourced by the scripts; changes to the project's directory.
# shellcheck shell=bash
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Prints the comment at the top of the script, which is its usage text.
usage_text() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "scripts/${0##*/}"; }

# Ends the script because of wrong arguments.
usage() {
    usage_text >&2
    exit 2
}

if [[ ${1-} == --help ]]; then
    usage_text
    exit
fi

# build PRESET [OPTION...]: configures with the options and builds; shows the output only on failure.
build() {
    local preset=$1 log=build/$1.log
    echo "Building in build/$preset..." >&2
    mkdir -p build
    if ! { cmake --preset "$preset" "${@:2}" && cmake --build --preset "$preset"; } &>"$log"; then
        cat "$log" >&2
        echo 'The build failed; see above.' >&2
        return 1
    fi
}

# install_bundle PRESET [DIRECTORY]: installs the build into DIRECTORY, by default a new one outside the build tree.
# Sets VOK_BUNDLE, which the tests use, to the path of the bundle.
install_bundle() {
    local prefix=${2-}
    if [[ ! $prefix ]]; then
        prefix=$(mktemp -d)
        # shellcheck disable=SC2064  # The directory is that of this call.
        trap "rm -rf '$prefix'" EXIT
    fi
    [[ $prefix == /* ]] || prefix=$OLDPWD/$prefix
    cmake --install "build/$1" --prefix "$prefix" >/dev/null
    export VOK_BUNDLE="$prefix/Vok Installer.app"
}
