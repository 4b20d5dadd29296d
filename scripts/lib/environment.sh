# The commands run alike wherever they are started: locale, time zone and umask are their own, and
# of the caller's environment only what is listed here reaches them. Sourced by common.sh.

# What one command hands to another of them passes.
if [[ -z ${BRIMWAVE_COMMAND:-} ]]; then
    for name in $(compgen -e); do
        case $name in
        BRIMWAVE_SERVICE_URL) unset "$name" ;; # the runs bring their own service
        HOME | PATH | PWD | BRIMWAVE_* | CCACHE_*) ;;
        DISPLAY | XAUTHORITY) ;; # for scripts/demo --open
        http_proxy | https_proxy | no_proxy) export -n "$name" ;; # for packages alone
        *) unset "$name" 2>/dev/null || true ;;                    # bash keeps a few to itself
        esac
    done
    export BRIMWAVE_COMMAND=yes
fi
export HOME=${HOME:-~} PATH
# Without it Wine cannot make file names beyond ASCII.
export LC_ALL=C.UTF-8
export TZ=UTC
umask 022
