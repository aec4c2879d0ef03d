"""Entry for `python3 -m provider_telegramd --dept ROLE --data-dir DIR`."""

import signal
import sys

# Blocked before the slower imports: a service manager may ask a bot to end in its very first
# moments, and that has to read as a clean end (status 0), not as a death by signal.
signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGTERM, signal.SIGINT})

from provider_telegramd.process import main  # noqa: E402

if __name__ == "__main__":
    sys.exit(main())
