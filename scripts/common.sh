# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# What every script begins with:
#
#   . "$(dirname "$0")/common.sh"
#
# It answers --help with the comment at the script's top (its rights apart), and gives the words for whatever is refused. A script ends
# with 2 after wrong use.
set -euo pipefail

script_help() { awk 'NR > 1 && !/^#/ { exit } NR > 1 && !/^# SPDX-/ { sub(/^# ?/, ""); print }' "$0"; }

# wrong_use REASON...
wrong_use() {
    echo "scripts/${0##*/}: $*" >&2
    echo "scripts/${0##*/} --help tells what it takes." >&2
    exit 2
}

# Refuses what begins with a dash: for scripts without options of their own, and for the rest behind them.
refuse_options() {
    local argument
    for argument in "$@"; do
        [[ $argument != -* ]] || wrong_use "unknown option $argument"
    done
}

# refuse_beyond COUNT ARGUMENT...
refuse_beyond() {
    local count=$1
    shift
    refuse_options "$@"
    [ $# -le "$count" ] || wrong_use "unexpected ${*:count + 1:1}"
}

# value_of OPTION [VALUE...]: prints the value that must follow an option.
value_of() {
    [[ $# -ge 2 && -n $2 && $2 != -* ]] || wrong_use "$1 needs a value"
    echo "$2"
}

# Tests that run nothing of the layers that others do not, that search all memory, where counters would lie too, or that try something
# else every day: scripts/coverage leaves them out.
# shellcheck disable=SC2034
uncounted='_residue_|^(torture_test|bindings_|documents_|end_to_end_)'

for argument in "$@"; do
    case $argument in
        -h | --help) script_help; exit 0 ;;
    esac
done
unset argument
