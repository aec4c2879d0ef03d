"""Whole desktops for tests by hand, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

import pathlib

from desktop import DISPLAY, Desktop, WATCHER, wait_until
from panels import HEIGHT, WIDTH, Driven, OnX


class Whole(OnX, Driven, Desktop):
    """A desktop on X11 with a panel at the bottom. `variables` tell programs which it is."""

    variables = {}
    pieces = ()  # commands that are started before the panel
    draws_menu_at = (1, 3)
    bar = 44
    icons = (900, 1160)  # where the panel's icons begin and end, left of a clock

    def __init__(self, build):
        super().__init__(build, bus=True, screen=f"{WIDTH}x{HEIGHT}x24")
        system = f"unix:path={self.environment['XDG_RUNTIME_DIR']}/system"
        self.spawn("dbus-daemon", "--session", "--nofork", f"--address={system}")
        self.environment.update(self.variables, LIBGL_ALWAYS_SOFTWARE="1",
                                GSETTINGS_BACKEND="keyfile", DBUS_SYSTEM_BUS_ADDRESS=system)
        self.start_pieces()

    def start_pieces(self):
        for piece in self.pieces:
            self.spawn(*piece)

    def icons_area(self):
        left, right = self.icons
        return left, HEIGHT - self.bar, right - left, self.bar

    def configure(self):
        pass


class Plasma(Whole):
    variables = {"XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
                 "KDE_SESSION_VERSION": "5", "QT_QUICK_BACKEND": "software", "KWIN_COMPOSE": "N"}
    pieces = (("kwin_x11",), ("kded5",))
    command = ("plasmashell",)
    draws_menu_at = (3,)  # and asks us for ours at the left button


class PlasmaWayland(Plasma):
    """The same in a window of another X server: ours is shown by the compositor's own X server."""

    draws_menu_at = (1, 3)
    variables = {**Plasma.variables, "XDG_SESSION_TYPE": "wayland", "KWIN_COMPOSE": "Q"}

    def start_pieces(self):
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        sockets = pathlib.Path("/tmp/.X11-unix")
        before = set(sockets.iterdir())
        self.screen = self.spawn("kwin_wayland", "--x11-display", DISPLAY, "--width", WIDTH,
                                 "--height", HEIGHT, "--xwayland", "--no-lockscreen")
        wait_until("the compositor", lambda: (runtime / "wayland-0").exists())
        number = wait_until("the X server", lambda: sorted(set(sockets.iterdir()) - before))[0].name[1:]
        self.environment.update(WAYLAND_DISPLAY="wayland-0", DISPLAY=f":{number}")
        key = next(runtime.glob("xauth_*"), None)
        if key is not None:
            self.environment["XAUTHORITY"] = str(key)
        self.spawn("kded5", "-platform", "wayland")

    def configure(self):
        self.command = ("plasmashell", "-platform", "wayland")
