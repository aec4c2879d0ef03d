"""Real panels for a test: each on a desktop of its own, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

import re
import subprocess

from compositor import WaylandDesktop
from desktop import DISPLAY, Desktop, WATCHER, wait_until

WIDTH, HEIGHT = 1280, 800

XFCE = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
"""

LXQT = """panels=panel1

[panel1]
alignment=-1
animation-duration=0
hidable=false
iconSize=22
lineCount=1
panelSize=32
plugins=spacer, statusnotifier
position=Top
width=100
width-percent=true

[spacer]
type=spacer
expandable=true

[statusnotifier]
type=statusnotifier
"""

WAYBAR = """{"layer": "top", "position": "top", "height": 30, "modules-right": ["tray"],
             "tray": {"icon-size": 22, "spacing": 8}}"""
WAYBAR_STYLE = "window#waybar { background: #202020; color: white; } #tray { padding: 0 4px; }"


def bytes_that_differ(one, other):
    return sum(a != b for a, b in zip(one, other))


class Driven:
    """What is the same of every panel. `command` starts it; `configure` writes its files."""

    command = ()
    bar = 34  # points at the top of the screen that the panel may take
    slack = 8  # by how much that may be more than it does

    def start_panel(self):
        self.configure()
        # What its libraries call critical ends it, and the test.
        self.panel = self.spawn("env", "G_DEBUG=fatal-criticals", *self.command)
        wait_until("the panel", lambda: WATCHER in self.bus_names())
        return self.panel

    def kill_panel(self):
        self.panel.kill()
        self.panel.wait()

    def write(self, name, text):
        file = self.home / ".config" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
        return file

    def seen(self, area=f"{WIDTH}x{HEIGHT}+0+0"):
        """What a person sees of a part of the screen, as bytes of red, green and blue."""
        return subprocess.run(["import", "-window", "root", "-crop", area, "-depth", "8", "rgb:-"],
                              env=dict(self.environment, DISPLAY=DISPLAY), capture_output=True,
                              check=False).stdout

    def icons_area(self):
        """Left, top, width and height of the part of the panel that the icon is in."""
        return 0, 0, WIDTH, self.bar

    def coloured_places(self):
        """Places in the panel that are of a strong colour, as the bars are and little else is."""
        left, top, width, height = self.icons_area()
        raw = self.seen(f"{width}x{height}+{left}+{top}")
        return [(left + i // 3 % width, top + i // 3 // width) for i in range(0, len(raw), 3)
                if max(raw[i:i + 3]) - min(raw[i:i + 3]) > 100]

    def icon(self):
        """Middle of the icon in the panel."""
        def middle():
            places = self.coloured_places()
            if len(places) < 20:
                return None
            return (sum(x for x, _ in places) // len(places), sum(y for _, y in places) // len(places))
        return wait_until("the icon in the panel", middle)

    def red_places(self):
        """Places of the mark that something has crashed: red, at the right, where no bar is."""
        x, _ = self.icon()
        left, top, width, height = self.icons_area()
        raw = self.seen(f"{left + width - x - 2}x{height}+{x + 2}+{top}")
        return sum(raw[i] > 200 and raw[i + 1] < 70 and raw[i + 2] < 70
                   for i in range(0, len(raw), 3))

    def says(self, words):
        """Whether the icon's text begins so."""
        return self.notifier_property("ToolTip")[2].startswith(words)

    def point_at(self, x, y):
        self.input("mousemove", x, y)

    def click(self, x, y, button=1):
        self.input("mousemove", x, y, "sleep", "0.1", "click", button)

    def key(self, *keys):
        for key in keys:
            self.input("key", key)

    def input(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=dict(self.environment, DISPLAY=DISPLAY),
                       capture_output=True, check=False)

    def open_panels_menu(self, button):
        """Presses the icon and waits for what the panel shows; gives what was seen before."""
        # Where menus of the icon are, and nothing that a window manager shows for a moment.
        x, y = self.icon()
        top = self.bar + 20 if y < HEIGHT // 2 else 0
        below = f"400x{HEIGHT - self.bar - 20}+{WIDTH - 400}+{top}"
        before = self.seen(below)
        self.click(x, y, button)
        wait_until("the menu of the panel",
                   lambda: bytes_that_differ(before, self.seen(below)) > 3000)
        return lambda: bytes_that_differ(before, self.seen(below)) > 3000


class OnX:
    """What is seen of our windows on an X11 desktop, whose menus have the keyboard."""

    def choose_preferences(self):
        self.key("Down", "Return")

    def choose_first_bot(self):
        self.key(*["Down"] * 4, "Return")

    def cover(self):
        """Another program's window where ours will be."""
        self.spawn("xev", "-geometry", "1000x600+100+100")
        wait_until("another program's window", lambda: self.windows("Event Tester"))

    def window_is_in_front(self):
        window = self.windows("^Varnhold$")
        stack = self.tool("xprop", "-root", "_NET_CLIENT_LIST_STACKING").stdout
        ordinary = [each for each in re.findall("0x[0-9a-f]+", stack)
                    if int(each, 16) in map(int, (*window, *self.windows("Event Tester")))]
        return window and self.focused() == window[0] and int(ordinary[-1], 16) == int(window[0])

    def strip_is_shown(self):
        return bool(self.windows("^Varnhold, "))

    def framed_window(self):
        """Left, top, width and height of the settings window with its frame; None before there is one."""
        windows = self.windows("^Varnhold$")
        said = windows and self.tool("xprop", "-id", windows[0], "_NET_FRAME_EXTENTS").stdout
        if not windows or "=" not in said:
            return None
        left, right, top, bottom = (int(each) for each in said.split("=")[1].split(","))
        x, y, width, height = self.geometry(windows[0])
        return (x - left, y - top, width + left + right, height + top + bottom)


class Xfce(OnX, Driven, Desktop):
    command = ("xfce4-panel",)
    draws_menu_at = (1, 3)

    def __init__(self, build, screen=f"{WIDTH}x{HEIGHT}x24"):
        super().__init__(build, bus=True, screen=screen)
        self.spawn("xfwm4", "--compositor=off")

    def configure(self):
        self.write("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", XFCE)


class Lxqt(OnX, Driven, Desktop):
    command = ("lxqt-panel",)
    draws_menu_at = (3,)  # and asks us for ours at the left button

    def __init__(self, build):
        super().__init__(build, bus=True, manager=True, screen=f"{WIDTH}x{HEIGHT}x24")

    def configure(self):
        self.write("lxqt/panel.conf", LXQT)


class Waybar(Driven, WaylandDesktop):
    """A compositor in a window of an X server, which brings it a pointer and keys."""

    draws_menu_at = (1, 3)

    # Its menus never have the keyboard, so rows are found by the discs that running bots have.

    def green_discs(self):
        """Middles of the discs in the menu, from top to bottom."""
        raw = self.seen()
        places = [(i // 3 // WIDTH, i // 3 % WIDTH) for i in range(self.bar * WIDTH * 3, len(raw), 3)
                  if raw[i] < 70 and 160 < raw[i + 1] < 200 and raw[i + 2] < 90]
        tops = [y for y, x in places if (y - 1, x) not in places and (y - 2, x) not in places]
        rows = sorted({min(each for each in tops if abs(each - y) < 12) for y in tops})
        x = places[0][1]
        return [(x, y + 6) for y in rows]

    def choose_preferences(self):
        x, y = self.green_discs()[0]
        self.click(x + 20, y - 27)

    def choose_first_bot(self):
        x, y = self.green_discs()[1]
        self.click(x + 20, y)

    def strip_is_shown(self):
        return any(node["name"].startswith("Varnhold, ") for node in self.nodes())

    def cover(self):
        pass  # the compositor gives each window a tile of its own

    def window_is_in_front(self):
        return any(node["name"] == "Varnhold" and node["focused"] for node in self.nodes())

    def framed_window(self):
        for node in self.nodes():
            if node["name"] == "Varnhold" and node["visible"]:
                frame, title = node["rect"], node["deco_rect"]
                return (frame["x"], frame["y"] - title["height"], frame["width"],
                        frame["height"] + title["height"])
        return None

    def __init__(self, build, native=True):
        super().__init__(build, native=native, bus=True, screen=f"{WIDTH}x{HEIGHT}x24", inside=True)

    def configure(self):
        self.command = ("waybar", "-c", self.write("waybar/config", WAYBAR), "-s",
                        self.write("waybar/style.css", WAYBAR_STYLE))


class WaybarBesideX(Waybar):
    """The same where programs for X run beside the compositor's own, as ours does by preference."""

    slack = 34  # nobody tells an X server of the bar

    def __init__(self, build):
        super().__init__(build, native=False)

    def strip_is_shown(self):
        """The compositor doesn't manage it, so only the X server knows."""
        return bool(self.windows("^Varnhold, "))

