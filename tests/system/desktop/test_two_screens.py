"""Strip, menu, popover and settings window where there is more than one screen, and where screens come and go.

Each test runs in a sandbox and a process of its own: test_two_screens.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from panels import XFCE, OnX
from vnc import SeenFromAfar

# Left, top, width and height. Below the right one, nothing is ever seen.
LEFT, RIGHT = (0, 0, 1280, 800), (1280, 0, 1000, 600)
BAR = 29  # height of the panel


class TwoScreens(OnX, SeenFromAfar):
    def __init__(self, build, primary=LEFT, **more):
        self.primary = primary
        super().__init__(build, screen="1280x800x24", **more)

    def start_display(self, screen):
        display = super().start_display(screen)
        self.set_screens(LEFT, RIGHT)
        done = self.tool("xrandr", "--output", f"VNC-{1 if self.primary == RIGHT else 0}", "--primary")
        assert done.returncode == 0, done.stderr
        return display

    def set_screens(self, *screens):
        self.viewer.set_screens(*screens)
        wait_until("the screens", lambda: self.screens() == sorted(screens))

    def start_bar(self, number):
        """A panel without icons at the bottom of one of the screens, counted as programs see them."""
        file = self.home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
        file.parent.mkdir(parents=True)
        file.write_text(XFCE.replace("p=6;", "p=8;").replace(
            '<property name="position-locked"',
            f'<property name="output-name" type="string" value="monitor-{number}"/>'
            '<property name="position-locked"').replace(
            '<property name="plugin-2" type="string" value="systray"/>', "").replace(
            '<value type="int" value="2"/>', ""))
        self.spawn("xfce4-panel")
        panel = wait_until("the panel", lambda: self.windows("^xfce4-panel$"))[0]
        def takes_room():
            return "=" in self.tool("xprop", "-id", panel, "_NET_WM_STRUT_PARTIAL").stdout
        wait_until("it takes its room", takes_room)

    def drag(self, window, x, y):
        """Until the window's upper left corner is there."""
        left, top, _, _ = self.geometry(window)
        self.tool("xdotool", "mousemove", left + 12, top + 10, "mousedown", 1)
        for step in range(1, 11):
            self.tool("xdotool", "mousemove", left + 12 + (x - left) * step // 10,
                      top + 10 + (y - top) * step // 10)
        self.tool("xdotool", "mouseup", 1)


def is_inside(window, area):
    left, top, width, height = window
    return (width > 0 and left >= area[0] and top >= area[1] and left + width <= area[0] + area[2]
            and top + height <= area[1] + area[3])


def corner(area, taken=0):
    """Where the lower right of a strip is that nobody has moved."""
    left, top, width, height = area
    return left + width - 8, top + height - taken - 8


class TwoScreensTest(unittest.TestCase):
    def launch(self, **more):
        self.d = TwoScreens(BUILD, **more)
        self.addCleanup(self.d.end)
        self.d.set_fleet({"planner": "running", "builder": "running", "watcher": "stopped"})
        return self.d

    def each_manager(self, **more):
        for manager in (False, True):
            with self.subTest(manager=manager):
                desktop = self.launch(manager=manager, **more)
                desktop.start()
                yield desktop, desktop.strip()
                desktop.end()
                desktop.reset()

    def lower_right(self):
        left, top, width, height = self.d.geometry(self.d.strip())
        return left + width, top + height

    def await_corner(self, area, taken=0):
        wait_until(f"the strip is in the corner of {area}",
                   lambda: self.lower_right() == corner(area, taken))

    def await_strip_in(self, area):
        wait_until(f"the strip is inside {area}",
                   lambda: is_inside(self.d.geometry(self.d.strip()), area))

    def test_strip_stands_on_the_primary_screen(self):
        for primary in (LEFT, RIGHT):
            with self.subTest(primary=primary):
                desktop = self.launch(primary=primary)
                desktop.start()
                self.await_corner(primary)
                desktop.end()
                desktop.reset()

    def test_strip_goes_with_its_screen_and_comes_back_with_it(self):
        for desktop, strip in self.each_manager():
            desktop.drag(strip, 1700, 200)
            self.await_strip_in(RIGHT)
            wait_until("it is kept", self.remembered)
            there = desktop.geometry(strip)
            desktop.supervisor.terminate()
            desktop.supervisor.wait(60)
            desktop.start()
            wait_until("it is found there again",
                       lambda there=there: self.d.geometry(self.d.strip()) == there)
            desktop.set_screens(LEFT)
            self.await_corner(LEFT)
            desktop.set_screens(LEFT, RIGHT)
            wait_until("it is there once more",
                       lambda there=there: self.d.geometry(self.d.strip()) == there)

    def remembered(self):
        """What the program keeps of places of the strip."""
        return [line for path in self.d.home.rglob("*") if path.is_file() and path.suffix != ".log"
                for line in [path.read_bytes()[:100000].decode(errors="replace")]
                if "stripPlace" in line]

    def test_strip_is_let_go_on_one_screen_alone(self):
        for desktop, strip in self.each_manager():
            desktop.drag(strip, 1280 - 12, 300)
            wait_until("it is whole on one", lambda strip=strip: any(
                is_inside(desktop.geometry(strip), area) for area in (LEFT, RIGHT)) and
                desktop.geometry(strip)[1] > 200)
            desktop.drag(strip, 1900, 680)  # where no screen is
            self.await_strip_in(RIGHT)

    def test_menu_and_popover_open_on_the_strips_screen(self):
        desktop = self.launch(manager=True)
        desktop.start()
        strip = desktop.strip()
        for area, x in ((RIGHT, 1282), (LEFT, 1150)):
            desktop.drag(strip, x, 300)
            self.await_strip_in(area)
            desktop.click_window(strip)
            menu = wait_until("the menu", desktop.menus)[0]
            self.assertTrue(is_inside(desktop.geometry(menu), area), desktop.geometry(menu))
            desktop.key("Escape")
            wait_until("the menu is gone", lambda: not desktop.menus())
            desktop.notify(("Opus was installed.", True))
            popover = wait_until("the popover", lambda: desktop.windows("^New AI model"))[0]
            self.assertTrue(is_inside(desktop.geometry(popover), area), desktop.geometry(popover))
            desktop.click(100, 700)
            wait_until("it is gone", lambda: not desktop.windows("^New AI model"))

    def test_each_screen_leaves_room_for_its_own_panel(self):
        for barred, other in ((LEFT, RIGHT), (RIGHT, LEFT)):
            for primary in (barred, other):
                with self.subTest(barred=barred, primary=primary):
                    desktop = self.launch(manager=True, primary=primary)
                    desktop.start_bar(0 if (barred == LEFT) == (primary == LEFT) else 1)
                    desktop.start()
                    taken = BAR if primary == barred else 0
                    self.await_corner(primary, taken)
                    desktop.await_launched()
                    desktop.run_second()
                    left, top, width, height = primary
                    area = (left, top, width, height - taken)
                    wait_until("the window with its frame", desktop.framed_window)
                    wait_until(f"it is inside {area}",
                               lambda area=area: is_inside(self.d.framed_window() or (0, 0, 0, 0), area))
                    desktop.end()
                    desktop.reset()

    def test_panel_that_appears_lifts_the_strip_above_it(self):
        desktop = self.launch(manager=True)
        desktop.start()
        self.await_corner(LEFT)
        desktop.start_bar(0)
        self.await_corner(LEFT, BAR)

    def test_window_comes_back_when_its_screen_goes(self):
        for desktop, _ in self.each_manager(primary=RIGHT):
            desktop.await_launched()
            desktop.run_second()
            window = wait_until("the window", lambda: desktop.windows("^Varnhold$"))[0]
            wait_until("it is on the right screen",
                       lambda window=window: desktop.geometry(window)[0] >= RIGHT[0])
            desktop.set_screens(LEFT)
            wait_until("it is on the left one", lambda window=window: is_inside(
                desktop.framed_window() or desktop.geometry(window), LEFT))
            self.await_corner(LEFT)
            self.assertIsNone(desktop.supervisor.poll())

    def test_all_opens_on_the_screen_of_the_tray_that_has_the_icon(self):
        desktop = self.launch(manager=True)
        desktop.spawn("trayer", "--edge", "bottom", "--align", "left", "--widthtype", "request",
                      "--heighttype", "pixel", "--height", "24", "--SetDockType", "true", "--monitor", "1")
        wait_until("the tray", lambda: desktop.windows("panel"))
        desktop.start()
        icon = wait_until("the icon", lambda: [
            window for window in desktop.our_windows() if desktop.geometry(window)[2:] == (22, 22)
            and desktop.geometry(window)[0] >= RIGHT[0]])[0]
        desktop.click_window(icon)
        menu = wait_until("the menu", desktop.menus)[0]
        self.assertTrue(is_inside(desktop.geometry(menu), RIGHT), desktop.geometry(menu))
        desktop.key("Escape")
        desktop.notify(("Opus was installed.", True))
        popover = wait_until("the popover", lambda: desktop.windows("^New AI model"))[0]
        self.assertTrue(is_inside(desktop.geometry(popover), RIGHT), desktop.geometry(popover))
        desktop.run_second()
        wait_until("the window", lambda: is_inside(desktop.framed_window() or (0, 0, 0, 0), RIGHT))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
