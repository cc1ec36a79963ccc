# shellcheck shell=bash
# What the scripts share. Sourced; expects `root`, the folder of the project.
# Everything said goes to stderr: stdout belongs to the program that is started.

: "${root:?}"
list=$root/scripts/packages

say() { printf '%s\n' "$*" >&2; }

fail() {
    say "$*"
    exit 1
}

# packages_for GROUP...: their names, one a line.
packages_for() {
    local name group
    while read -r name group _; do
        [[ -z $name || $name == '#'* ]] && continue
        [[ " $* " == *" $group "* ]] && printf '%s\n' "$name"
    done <"$list"
    return 0
}

# missing_packages GROUP...: those of them that are not installed.
missing_packages() {
    local -a wanted
    mapfile -t wanted < <(packages_for "$@")
    local name status installed=' '
    while read -r name status; do
        [[ $status == installed ]] && installed+="$name "
    done < <(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null)
    for name in "${wanted[@]}"; do
        [[ $installed == *" $name "* ]] || printf '%s\n' "$name"
    done
}

# apt ARGUMENTS...: as root, without a question, keeping out of the program's stdin and stdout.
apt() {
    local -a command=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -q -y "$@")
    ((EUID == 0)) || command=(sudo "${command[@]}")
    "${command[@]}" </dev/null >&2
}

# install_packages GROUP...: installs what is missing. Ends the script where that is not possible, having
# said what to install; on a system without Debian's packages it goes on and leaves the rest to CMake.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        [[ -e $root/build/.told-packages ]] && return 0
        say "This is not Debian, so nothing is installed for you. By Debian's names, Zantor needs:"
        packages_for "$@" | sed 's/^/  /' >&2
        mkdir -p "$root/build" && touch "$root/build/.told-packages"
        return 0
    fi
    local -a missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} == 0)) && return 0
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        fail "Please install, as root:  apt-get install --no-install-recommends ${missing[*]}"
    fi
    say "Installing ${#missing[@]} packages: ${missing[*]}"
    # The lists may be absent on a new machine, or older than what the mirror holds.
    apt install --no-install-recommends "${missing[@]}" 2>/dev/null && return 0
    if ! apt update || ! apt install --no-install-recommends "${missing[@]}"; then
        fail "Could not install: ${missing[*]}"
    fi
}

# one_at_a_time: two builds in one folder would spoil each other; the second waits for the first.
one_at_a_time() {
    mkdir -p "$root/build"
    exec {build_lock}>"$root/build/.lock"
    flock --nonblock "$build_lock" && return 0
    say "Waiting for another build in $root/build ..."
    flock "$build_lock"
}

# quietly WHAT COMMAND...: says what is done, and shows the command's own words only where it fails.
quietly() {
    local what=$1 output start=$SECONDS
    shift
    say "$what"
    output=$(mktemp)
    if ! "$@" >"$output" 2>&1 </dev/null; then
        cat "$output" >&2
        rm -f "$output"
        return 1
    fi
    rm -f "$output"
    ((SECONDS - start < 5)) || say "    done in $((SECONDS - start)) s"
}
