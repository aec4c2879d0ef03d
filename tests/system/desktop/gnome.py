"""GNOME for tests by hand, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

import json
import pathlib
import re
import shutil

from desktop import NAME, SOURCE, WATCHER, Desktop, wait_until
from panels import HEIGHT, WIDTH, Driven, OnX

GNOME = """[org/gnome/shell]
enabled-extensions={extensions}
welcome-dialog-last-shown-version='999'
[org/gnome/desktop/interface]
enable-animations=false
"""

ICONS = "ubuntu-appindicators@ubuntu.com"

# What the shell knows of the windows that it shows, whatever they speak.
WINDOWS = """JSON.stringify(global.get_window_actors().map(a => a.meta_window).map(w => {
    const frame = w.get_frame_rect();
    return {title: w.title ?? '', place: [frame.x, frame.y, frame.width, frame.height],
            focused: w.has_focus(),
            menu: w.get_window_type() === imports.gi.Meta.WindowType.DROPDOWN_MENU,
            app: imports.gi.Shell.WindowTracker.get_default().get_window_app(w)?.get_name() ?? ''};
}))"""


class Gnome(OnX, Driven, Desktop):
    """GNOME's shell on X11, which has no tray: what keeps its bar for itself."""

    draws_menu_at = (1, 3)
    bar = 32
    session = "x11"
    words = ("--x11", "--sm-disable")
    extensions = "@as []"
    strip_menu_goes_by = ("strip", "press")
    variables = {}  # of ours

    def __init__(self, build):
        super().__init__(build, bus=True, screen=f"{WIDTH}x{HEIGHT}x24")
        share = self.home / ".local/share"
        for source, folder, name in (
                ("packaging", "applications", f"{NAME}.desktop"),
                ("src/views/desktop/resources", "icons/hicolor/scalable/apps", "varnhold.svg")):
            (share / folder).mkdir(parents=True)
            shutil.copy(SOURCE / source / name,
                        share / folder / name.replace("varnhold.svg", f"{NAME}.svg"))
        system = f"unix:path={self.environment['XDG_RUNTIME_DIR']}/system"
        self.spawn("dbus-daemon", "--session", "--nofork", f"--address={system}")
        self.environment.update(XDG_SESSION_TYPE=self.session, XDG_CURRENT_DESKTOP="GNOME",
                                XDG_DATA_HOME=str(share), LIBGL_ALWAYS_SOFTWARE="1",
                                GSETTINGS_BACKEND="keyfile", DBUS_SYSTEM_BUS_ADDRESS=system,
                                MUTTER_DEBUG_DUMMY_MODE_SPECS=f"{WIDTH}x{HEIGHT}",
                                PATH=f"{self.prefix}/bin:{self.environment['PATH']}")
        self.write("glib-2.0/settings/keyfile",
                   GNOME.format(extensions=self.extensions))
        self.start_shell()
        self.environment.update(self.variables)

    def start_shell(self):
        self.shell = self.spawn("gnome-shell", "--unsafe-mode", *self.words)
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

    # -- what the shell says --------------------------------------------------------------------

    def shell_says(self, question):
        """Value of an expression within the shell."""
        done, text = self.ask("call", "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell",
                              "Eval", "s", question) or (False, "")
        return json.loads(text) if done and text else None

    def shown_windows(self):
        return json.loads(self.shell_says(WINDOWS) or "[]")

    def shown(self, words):
        """The window whose title is of these words as the shell has it; None if it has none."""
        return next((each for each in self.shown_windows() if re.search(words, each["title"])), None)

    def strip(self, words="^Varnhold, "):
        """Left, top, width and height of it, whose title is of these words."""
        def place():
            found = self.shown(words)
            return found and found["place"][3] and found["place"]
        return wait_until(f'the strip that says "{words}"', place)

    def strip_is_shown(self):
        return self.shown("^Varnhold, ") is not None

    def our_menu(self):
        """Left, top, width and height; None if none is open."""
        menu = self.shown("^Varnhold menu$")
        return menu and menu["place"]

    def click_strip(self, button=1):
        left, top, width, height = self.strip()
        # A press that comes with another that closes the menu opens none.
        self.input("mousemove", left + width // 2, top + height // 2, "sleep", "0.4", "click", button)

    def window_in_front(self):
        """The settings window if it has the keyboard."""
        window = self.shown("^Varnhold$")
        return window if window and window["focused"] else None

    def bring_forward(self, title):
        self.shell_says(f"""imports.ui.main.activateWindow(global.get_window_actors().map(
            a => a.meta_window).find(w => w.title === '{title}'))""")

    def bar_says(self):
        """Text that stands in the bar beside an icon."""
        return self.shell_says("""Object.values(imports.ui.main.panel.statusArea)
            .filter(i => i._icon && i._indicator).map(i => i._label?.text ?? "").join()""")

    def notifications(self):
        """Source, title and text of what the shell's own list of notifications has."""
        return self.shell_says("""imports.ui.main.messageTray.getSources().flatMap(
            s => s.notifications.map(n => [s.app?.get_id() ?? '', n.title, n.bannerBodyText]))""")


class GnomeWithIcons(Gnome):
    """The same with the extension that shows icons in its bar, as many have it."""

    extensions = f"['{ICONS}']"

    def icons_area(self):
        """Of its first icon; what it says stands beside it."""
        area = self.shell_says("""Object.values(imports.ui.main.panel.statusArea)
            .filter(i => i._icon && i._indicator).map(
                i => [...i._icon.get_transformed_position(), ...i._icon.get_transformed_size()])""")
        return tuple(map(round, area[0])) if area and None not in area[0] else (0, 0, 1, 1)

    def icon(self):
        """It moves until it has all of its words beside it, and opens nothing until its rows are known."""
        last = [None]
        def rests():
            before, last[0] = last[0], super(GnomeWithIcons, self).icon()
            return self.bar_says() and self.has_rows() and before == last[0]
        wait_until("the icon at rest", rests)
        return last[0]

    def has_rows(self):
        return self.shell_says("""Object.values(imports.ui.main.panel.statusArea)
            .some(i => i._icon && i._indicator && i.menu.numMenuItems > 5)""")

    def start_panel(self):
        self.order("EnableExtension")
        wait_until("the panel", lambda: WATCHER in self.bus_names())

    def kill_panel(self):
        self.order("DisableExtension")

    def order(self, method):
        self.ask("call", "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Extensions",
                 method, "s", ICONS)


class GnomeWayland(Gnome):
    """GNOME as Debian starts it, in a window of another X server: ours is shown by the shell's own X server."""

    session = "wayland"
    words = ("--nested", "--wayland")
    # Its menu isn't told of a press on what isn't the X server's, and never has the keyboard.
    strip_menu_goes_by = ("strip",)

    def choose_row(self, distance):
        left, top, _, _ = self.our_menu()
        self.click(left + 60, top + distance)

    def choose_preferences(self):
        self.choose_row(19) if self.our_menu() else super().choose_preferences()

    def choose_first_bot(self):
        self.choose_row(141) if self.our_menu() else super().choose_first_bot()

    def await_bar(self):
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        wait_until("the compositor", lambda: (runtime / "wayland-0").exists())
        key = wait_until("the X server", lambda: next(runtime.glob(".mutter-Xwaylandauth.*"), None))
        self.environment.update(WAYLAND_DISPLAY="wayland-0", DISPLAY=":0", XAUTHORITY=str(key))
        super().await_bar()


class GnomeWaylandWithIcons(GnomeWithIcons, GnomeWayland):
    """The same with icons in its bar."""


class GnomeNative(GnomeWayland):
    """The same where ours speaks the compositor's own language, as where there is no X server."""

    variables = {"QT_QPA_PLATFORM": "wayland"}
    strip_menu_goes_by = ("strip", "press", "overview")
    choose_preferences = OnX.choose_preferences
    choose_first_bot = OnX.choose_first_bot

    def window_is_in_front(self):
        return self.window_in_front()  # which no X server knows

    def our_menu(self):
        """It has no title there."""
        return next((each["place"] for each in self.shown_windows()
                     if each["menu"] and each["app"] == "Varnhold"), None)

    def framed_window(self):
        window = self.shown("^Varnhold$")
        return tuple(window["place"]) if window else None


class GnomeNativeWithIcons(GnomeWithIcons, GnomeNative):
    """And with icons in its bar."""
