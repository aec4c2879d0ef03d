#include "platform/orphan_sweep.h"

namespace varnhold::platform {

namespace {

// As extended regular expressions for awk, in which a bracketed dot needs no escape through the
// shell. The shell puts in the tool's name.
constexpr const char* linuxPlaces =
    "(^|/)("
    "[.]local/bin/$cli|[.]local/share/$cli/.*|"
    "[.]npm-global/bin/$cli|[.]npm/bin/$cli|node_modules/[.]bin/$cli|lib/node_modules/.*/$cli|"
    "[.]nvm/versions/node/[^/]+/bin/$cli|[.]linuxbrew/bin/$cli)$|"
    "^(/usr/local/bin/$cli|/usr/bin/$cli)$";

std::string forEachTool(const std::string& pipeline) {
    return "for cli in claude gemini qwen codex; do " + pipeline +
           " | xargs -r kill -9 2>/dev/null; done";
}

} // namespace

std::string macOrphanSweep() {
    return forEachTool("ps -axo pid,ppid,command | awk -v c=\"opt/homebrew/bin/$cli\" "
                       "'$2==1 && $0 ~ c {print $1}'");
}

std::string linuxOrphanSweep() {
    return forEachTool(
        std::string("ps xo pid,ppid,tty,exe:4096,command | awk -v c=\"opt/homebrew/bin/$cli\" "
                    "-v d=\"") +
        linuxPlaces +
        "\" '{p[NR]=$1;q[NR]=$2;o[NR]=$3==\"?\"&&($0~c||$4~d||$5~d||$6~d)} "
        "$5~/(^|\\/)systemd$/&&$6==\"--user\"{r[$1]=1} "
        "END{r[1]=1;for(i=1;i<=NR;i++)if(o[i]&&(q[i] in r))print p[i]}'");
}

} // namespace varnhold::platform
