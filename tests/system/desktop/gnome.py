"""GNOME for tests by hand, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

import pathlib

from desktop import WATCHER, Desktop, wait_until
from panels import HEIGHT, WIDTH, Driven, OnX

GNOME = """[org/gnome/shell]
enabled-extensions={extensions}
welcome-dialog-last-shown-version='999'
[org/gnome/desktop/interface]
enable-animations=false
"""


class Gnome(OnX, Driven, Desktop):
    """GNOME's shell on X11, which has no tray: what keeps its bar for itself."""

    draws_menu_at = (1, 3)
    bar = 30
    session = "x11"
    words = ("--x11", "--sm-disable")
    extensions = "@as []"

    def __init__(self, build):
        super().__init__(build, bus=True, screen=f"{WIDTH}x{HEIGHT}x24")
        self.start_shell()

    def start_shell(self):
        system = f"unix:path={self.environment['XDG_RUNTIME_DIR']}/system"
        self.spawn("dbus-daemon", "--session", "--nofork", f"--address={system}")
        self.environment.update(XDG_SESSION_TYPE=self.session, XDG_CURRENT_DESKTOP="GNOME",
                                LIBGL_ALWAYS_SOFTWARE="1", GSETTINGS_BACKEND="keyfile",
                                DBUS_SYSTEM_BUS_ADDRESS=system,
                                MUTTER_DEBUG_DUMMY_MODE_SPECS=f"{WIDTH}x{HEIGHT}")
        self.write("glib-2.0/settings/keyfile", GNOME.format(extensions=self.extensions))
        self.spawn("gnome-shell", *self.words)
        self.await_bar()
        self.leave_overview()

    def await_bar(self):
        wait_until("the shell's bar", lambda: self.tool(
            "xprop", "-root", "_NET_WORKAREA").stdout.split("=")[-1].split(",")[1:2] == [" 32"])

    def leave_overview(self):
        # It begins with an overview of all windows, which leaves nothing of the desktop at its edge.
        def overview_is_left():
            self.key("Escape")
            edge = self.seen("4x4+10+400")
            return len(edge) == 48 and edge[2] > edge[0] + 60
        wait_until("the desktop", overview_is_left)


class GnomeWithIcons(Gnome):
    """The same with the extension that shows icons in its bar, as many have it."""

    extensions = "['ubuntu-appindicators@ubuntu.com']"

    def start_panel(self):
        wait_until("the panel", lambda: WATCHER in self.bus_names())


class GnomeWayland(Gnome):
    """GNOME as Debian starts it, in a window of another X server: ours is shown by the shell's own X server."""

    session = "wayland"
    words = ("--nested", "--wayland")

    def await_bar(self):
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        wait_until("the compositor", lambda: (runtime / "wayland-0").exists())
        key = wait_until("the X server", lambda: next(runtime.glob(".mutter-Xwaylandauth.*"), None))
        self.environment.update(WAYLAND_DISPLAY="wayland-0", DISPLAY=":0", XAUTHORITY=str(key))
        super().await_bar()
