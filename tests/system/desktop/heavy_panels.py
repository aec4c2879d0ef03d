"""Whole desktops for tests by hand, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

import pathlib

from desktop import DISPLAY, Desktop, WATCHER, wait_until
from panels import HEIGHT, WIDTH, Driven, OnX
from tiling import Embedded


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


RUNNING = 2  # states of Cinnamon's shell

MATE = """[org/mate/panel/general]
toplevel-id-list=['bottom']
object-id-list=['icons']
[org/mate/panel/toplevels/bottom]
expand=true
orientation='bottom'
size=28
[org/mate/panel/objects/icons]
object-type='applet'
applet-iid='NotificationAreaAppletFactory::NotificationArea'
toplevel-id='bottom'
panel-right-stick=true
position=0
locked=true
"""


class Mate(Whole):
    variables = {"XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "MATE"}
    pieces = (("marco", "--no-composite"),)
    command = ("mate-panel",)
    bar = 32
    icons = (1000, WIDTH)

    def configure(self):
        self.write("glib-2.0/settings/keyfile", MATE)
        # As its settings daemon has it.
        self.write("gtk-3.0/settings.ini", "[Settings]\ngtk-button-images=1\ngtk-menu-images=1\n")


class Budgie(Embedded, Whole):
    variables = {"XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "Budgie:GNOME"}
    pieces = (("budgie-wm", "--x11"),)
    command = ("budgie-panel",)
    bar = 41
    icons = (1060, 1166)  # red things stand right of it

    def start_panel(self):
        self.panel = self.spawn(*self.command)
        def has_its_signs():
            """It makes its tray anew until then."""
            raw = self.seen(f"{WIDTH - self.icons[1]}x{self.bar}+{self.icons[1]}+{HEIGHT - self.bar}")
            return sum(min(raw[i:i + 3]) > 200 for i in range(0, len(raw), 3)) > 100
        wait_until("the panel", has_its_signs)


class Cinnamon(Whole):
    """With what it shows described icons by, which Debian installs along with it."""

    variables = {"XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "X-Cinnamon"}
    pieces = (("/usr/libexec/xapps/sn-watcher/xapp-sn-watcher",),)
    command = ("cinnamon",)
    draws_menu_at = (3,)  # and asks us for ours at the left button
    bar = 40
    icons = (1000, 1170)

    def start_panel(self):
        self.panel = self.spawn(*self.command)
        def hears_presses():
            return self.ask("call", "org.Cinnamon", "/org/Cinnamon", "org.Cinnamon", "GetRunState") == [RUNNING]
        wait_until("the shell", hears_presses)
