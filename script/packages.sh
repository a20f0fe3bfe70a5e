# shellcheck shell=bash
# Sourced by the scripts beside it: installs Debian packages, only those that are missing.

# install_missing PACKAGE...
# Says nothing when every package is there. Uses sudo unless run as root. A failure ends the
# calling script with what to do about it.
install_missing() {
    local package missing=()
    for package in "$@"; do
        if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages, and no sudo to install them. As root, run:" >&2
            echo "  apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi

    echo "Installing ${#missing[@]} missing packages: ${missing[*]}" >&2
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y)
    if ! "${apt[@]}" install --no-install-recommends "${missing[@]}" >"$(install_log)" 2>&1; then
        # The package lists may be missing or too old: fetch them once and try again.
        if ! { "${apt[@]}" update && "${apt[@]}" install --no-install-recommends \
            "${missing[@]}"; } >"$(install_log)" 2>&1; then
            tail -n 20 "$(install_log)" >&2
            echo "Could not install the packages above. Check the network and apt's sources," >&2
            echo "then run the script again. The whole log: $(install_log)" >&2
            return 1
        fi
    fi
    rm -f "$(install_log)"
}

install_log() {
    echo "${TMPDIR:-/tmp}/velmor-packages.$$.log"
}
