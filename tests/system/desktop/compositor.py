"""A Wayland desktop of its own for a test: sway without a screen, with or without an X server beside it.

Only ever used inside the sandbox, where all processes are ours.
"""

import json
import os
import pathlib
import re

from desktop import Desktop, command_lines, wait_until

# No bar of its own, and nothing that jumps: a test moves the pointer to where a window is.
CONFIGURATION = """
xwayland {xwayland}
output {output} mode {size}
default_border normal
focus_follows_mouse no
{more}
"""


class WaylandDesktop(Desktop):
    def __init__(self, build, native=True, inside=False, more="", **pieces):
        """`native`: without an X server, so that everybody speaks Wayland. `inside`: in a window of another
        X server, which brings it a pointer and a keyboard. `more`: for sway's own file."""
        self.native = native
        self.inside = inside
        self.more = more
        super().__init__(build, **pieces)

    def start_display(self, screen):
        width, height, _ = screen.split("x")
        if self.inside:
            super().start_display(screen)
        file = self.home / "sway"
        file.write_text(CONFIGURATION.format(xwayland="disable" if self.native else "force",
                                             output="X11-1" if self.inside else "HEADLESS-1",
                                             size=f"{width}x{height}", more=self.more))
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        sockets = pathlib.Path("/tmp/.X11-unix")
        for left in (*runtime.glob("sway-ipc.*"), *runtime.glob("wayland-*"),
                     *sockets.glob("X[0-8]"), *pathlib.Path("/tmp").glob(".X[0-8]-lock")):
            left.unlink()  # of one that was killed
        self.environment.update(WLR_BACKENDS="x11" if self.inside else "headless",
                                WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman")
        # It runs for no superuser, so it is told that it is somebody else's, with our rights: of a user whom
        # every system knows by name, since by that its X server knows whom to let in.
        somebody = ["unshare", "--user", "--map-user=1", "--map-group=1"]
        display = self.spawn(*(somebody if os.getuid() == 0 else []), "sway", "-c", file)
        if self.inside:
            self.give_keyboard()
        self.environment.pop("DISPLAY", None)
        socket = wait_until("the compositor", lambda: next(runtime.glob("sway-ipc.*.sock"), None))
        self.environment["SWAYSOCK"] = str(socket)
        wait_until("its answer", lambda: self.sway("get_outputs"))
        wayland = wait_until("the display", lambda: next(runtime.glob("wayland-?"), None))
        self.environment["WAYLAND_DISPLAY"] = wayland.name
        if not self.native:
            number = wait_until("the X server", lambda: next(sockets.glob("X[0-8]"), None)).name[1:]
            self.environment["DISPLAY"] = f":{number}"
            wait_until("the X server lets us in", lambda: self.tool("xdpyinfo").returncode == 0)
        return display

    def give_keyboard(self):
        """No window manager does it for the compositor's window."""
        found = wait_until("the compositor's window", lambda: re.search(
            r"(0x[0-9a-f]+)[^\n]* 1280x800", self.tool("xwininfo", "-root", "-children").stdout))
        self.tool("xdotool", "windowfocus", "--sync", found.group(1))

    def x_server(self):
        """Process id of the X server that the compositor has started."""
        return wait_until("the X server", lambda: next(
            (pid for pid, line in command_lines().items() if line.startswith("Xwayland ")), None))

    def sway(self, *question):
        """What sway says to a question as plain data; None if nothing."""
        done = self.tool("swaymsg", "--raw", "-t", *question)
        return json.loads(done.stdout) if done.returncode == 0 else None

    def order(self, *words):
        return self.tool("swaymsg", *words)

    def nodes(self):
        """All windows that sway manages, as it describes them."""
        def below(node):
            yield node
            for child in (*node["nodes"], *node["floating_nodes"]):
                yield from below(child)
        return [node for node in below(self.sway("get_tree")) if node.get("pid")]

    def picture(self, path):
        self.tool("grim", path)
