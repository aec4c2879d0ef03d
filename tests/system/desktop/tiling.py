"""Window managers that give each window a tile, driven by pointer and keys, and seen from outside.

Only ever used inside the sandbox, where all processes are ours.
"""

from desktop import Desktop, wait_until
from panels import HEIGHT, WIDTH, Driven, OnX

BAR_OF_I3 = """# i3 config file (v4)
font pango:DejaVu Sans 10
bar {
    id ours
    i3bar_command true
    position bottom
    workspace_buttons no
    status_command sleep infinity
}
"""


class OwnMenu(OnX, Driven):
    """Where no panel knows of menus, ours drops at either button. `item` gives the item's window."""

    def icon(self):
        left, top, width, height = self.geometry(self.item())
        return left + width // 2, top + height // 2

    def open_panels_menu(self, button):
        self.click_window(self.item(), button)
        wait_until("the menu", self.menus)
        return lambda: bool(self.menus())


class Embedded(OwnMenu):
    """A panel that takes windows of other programs in, and no descriptions of icons."""

    def set_fleet(self, states, paused=()):
        super().set_fleet(states, paused)
        self.polls = len(self.calls("list"))

    def says(self, words):
        """Such an icon says it to who rests on it, and that isn't read here; but the poll has come."""
        return len(self.calls("list")) > self.polls

    def item(self):
        left, top, width, height = self.icons_area()
        def is_there(window):
            x, y, _, side = self.geometry(window)
            return left <= x < left + width and y >= top and side <= height
        return wait_until("the icon in the panel",
                          lambda: [each for each in self.our_windows() if is_there(each)])[0]


class Tiling(OwnMenu, Desktop):
    draws_menu_at = (1, 3)

    def __init__(self, build):
        super().__init__(build, screen=f"{WIDTH}x{HEIGHT}x24")

    def window_is_in_front(self):
        """Beside others, so it is enough that it has the keyboard."""
        return self.windows("^Varnhold$") == [self.focused()]

    def framed_window(self):
        """What frame there is, is drawn by the tile around it."""
        window = self.windows("^Varnhold$")
        return self.geometry(window[0]) if window else None


class I3(Embedded, Tiling):
    command = ("i3bar", "-b", "ours")
    bar = 24

    def __init__(self, build):
        super().__init__(build)
        self.write("i3/config", BAR_OF_I3)
        self.spawn("i3")
        wait_until("the window manager", lambda: self.tool("i3-msg", "-t", "get_version").returncode == 0)

    def configure(self):
        pass

    def icons_area(self):
        return WIDTH - 100, HEIGHT - self.bar, 100, self.bar

    def start_panel(self):
        self.panel = self.spawn(*self.command)
        def offers_a_tray():
            return "_NET_SYSTEM_TRAY_S0" in self.tool("xlsatoms", "-name", "_NET_SYSTEM_TRAY_S0").stdout
        wait_until("the bar", lambda: self.windows("^i3bar for output") and offers_a_tray())


class Dwm(Tiling):
    """It has neither tray nor panel for one: the strip is all there is."""

    def __init__(self, build):
        super().__init__(build)
        self.spawn("dwm")
        wait_until("the window manager", lambda: "window id" in self.tool(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout)

    def start_panel(self):
        pass

    def icons_area(self):
        left, top, width, height = self.geometry(self.item())
        return left, top, width, height

    def item(self):
        return self.strip()

    def says(self, words):
        counts, *crashed = words.split()
        more = [f", {each[1:]} crashed" for each in crashed]
        return bool(self.windows(f"^Varnhold, {counts.replace('/', ' of ')} bots running{''.join(more)}$"))
