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

# names_for SYSTEM GROUP...: the packages of those groups as SYSTEM names them (debian, fedora, arch, opensuse),
# one a line, each once.
names_for() {
    local -A name
    local group system=$1
    shift
    while read -r 'name[debian]' group 'name[fedora]' 'name[arch]' 'name[opensuse]' _; do
        [[ -z ${name[debian]} || ${name[debian]} == '#'* ]] && continue
        [[ " $* " == *" $group "* && ${name[$system]} != - ]] && printf '%s\n' "${name[$system]}"
    done <"$list" | awk '!seen[$0]++'
    return 0
}

# packages_for GROUP...: Debian's names, one a line.
packages_for() { names_for debian "$@"; }

# system_of FILE: which column of the list the system uses that this os-release file describes; debian if none.
system_of() {
    local kin word
    # shellcheck disable=SC1090 # the file is the system's own; what it says is described in os-release(5)
    kin=$(. "$1" 2>/dev/null && printf '%s %s' "${ID:-}" "${ID_LIKE:-}")
    for word in $kin; do
        case $word in
            fedora | rhel | centos) echo fedora && return ;;
            arch) echo arch && return ;;
            opensuse* | suse | sles) echo opensuse && return ;;
        esac
    done
    echo debian
}

# how_to_install SYSTEM GROUP...: the sentence for a system on which nothing is installed by these scripts.
how_to_install() {
    local names command
    names=$(names_for "$@" | tr '\n' ' ')
    case $1 in
        fedora) command="sudo dnf install" ;;
        arch) command="sudo pacman -S --needed" ;;
        opensuse) command="sudo zypper install" ;;
        *)
            say "Nothing is installed for you on this system. By Debian's names, Zantor needs: ${names% }"
            return
            ;;
    esac
    say "Nothing is installed for you on this system. If something is missing, run:  $command ${names% }"
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
# said what to install; on a system without Debian's packages it says what to install and leaves the rest to CMake.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        [[ -e $root/build/.told-packages ]] && return 0
        how_to_install "$(system_of /etc/os-release)" "$@"
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
