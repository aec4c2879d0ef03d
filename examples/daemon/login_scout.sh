#!/bin/sh
# Walks a person through the sign-in of one provider, in a terminal window of its own. This one
# only pretends: it opens no page and asks for no secret. When it is done, the provider's
# re-login alert goes away, as it would after a real sign-in.
#
# Usage: login_scout.sh PROVIDER
set -eu

if [ "$#" -ne 1 ] || [ -z "$1" ]; then
    echo "Usage: login_scout.sh PROVIDER" >&2
    exit 2
fi

provider=$1
# A terminal window knows nothing of the bots' environment.
data=${DAEMON_DATA_DIR:-"$HOME/Library/Application Support/Varnhold"}

printf 'Hello! This is the sign-in for "%s".\n\n' "$provider"
printf 'It is a rehearsal: nothing leaves this machine, and no secret is asked for.\n'
if [ -t 0 ]; then
    printf 'Press Enter when you are done. '
    read -r _ || true
fi

python3 - "$data/reauth_alerts.json" "$provider" <<'PYTHON'
import json
import os
import sys

path, provider = sys.argv[1:]
try:
    with open(path, encoding="utf-8") as file:
        alerts = json.load(file)
except (OSError, ValueError):
    alerts = None
if isinstance(alerts, dict) and provider in alerts:
    del alerts[provider]
    draft = f"{path}.{os.getpid()}"
    with open(draft, "w", encoding="utf-8") as file:
        json.dump(alerts, file, ensure_ascii=False, separators=(",", ":"))
    os.replace(draft, path)
    print("The alert for this provider is gone.")
PYTHON

printf '\nAll done. You can close this window.\n'
