"""However a session ends under the supervisor, its fleet is taken down; a crash of its own leaves it be.

Each test runs in a sandbox and a process of its own: test_session_end.py BUILD_FOLDER TEST_NAME
"""

import os
import signal
import sys
import unittest

from compositor import WaylandDesktop
from desktop import Desktop, command_lines, label_of, wait_until

FLEET = {"planner": "running", "builder": "running", "fire_drill": "crashed"}


class SessionEndTest(unittest.TestCase):
    def launch(self, kind, **pieces):
        self.d = kind(BUILD, **pieces)
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET)
        self.d.start()
        self.d.await_launched()
        return self.d

    def each_display(self):
        for kind, pieces in ((Desktop, {}), (WaylandDesktop, {"native": True}),
                             (WaylandDesktop, {"native": False})):
            with self.subTest(kind=kind.__name__, **pieces):
                desktop = self.launch(kind, **pieces)
                yield desktop
                desktop.end()
                desktop.reset()

    def guardians(self):
        return [pid for pid, line in command_lines().items() if line.startswith("varnhold-guard")]

    def await_nobody(self):
        wait_until("nobody is left", lambda: not self.guardians() and not self.d.instances())

    def unloaded(self):
        return [call.split("/")[-1] for call in self.d.calls("bootout")]

    def assert_the_fleet_goes_once(self):
        self.d.supervisor.wait(60)
        self.await_nobody()
        self.assertEqual(self.unloaded(), [label_of(role) for role in FLEET])

    def test_display_that_dies_takes_the_fleet_down(self):
        for desktop in self.each_display():
            desktop.screen.kill()
            self.assert_the_fleet_goes_once()

    def test_display_that_ends_in_order_takes_the_fleet_down(self):
        for desktop in self.each_display():
            desktop.screen.terminate()
            self.assert_the_fleet_goes_once()

    def test_x_server_of_a_compositor_that_dies_takes_the_fleet_down(self):
        desktop = self.launch(WaylandDesktop, native=False)
        os.kill(desktop.x_server(), signal.SIGKILL)
        self.assert_the_fleet_goes_once()

    def test_orderly_end_takes_the_fleet_down_once(self):
        for desktop in self.each_display():
            desktop.supervisor.terminate()
            self.assert_the_fleet_goes_once()

    def test_signals_to_all_of_a_session_end_it_in_order(self):
        for desktop in self.each_display():
            for pid in (*self.guardians(), desktop.supervisor.pid):
                os.kill(pid, signal.SIGTERM)
            self.assert_the_fleet_goes_once()

    def test_end_of_a_login_takes_the_fleet_down(self):
        """As the login manager ends a session: every process of it at once, the display's too."""
        for desktop in self.each_display():
            displays = [pid for pid, line in command_lines().items()
                        if line.split()[0] in ("Xvfb", "Xwayland", "sway")]
            for pid in (*displays, *self.guardians(), desktop.supervisor.pid):
                os.kill(pid, signal.SIGTERM)
            desktop.supervisor.wait(60)
            self.await_nobody()
            # Where the toolkit leaves in the midst of it, the guardian does all of it once more.
            self.assertEqual(set(self.unloaded()), {label_of(role) for role in FLEET})

    def test_session_manager_of_the_x_server_ends_the_program_in_order(self):
        desktop = Desktop(BUILD, manager=True)
        self.addCleanup(desktop.end)
        address = desktop.home / "address"
        (desktop.home / ".xsmstartup").write_text(
            f"sh -c 'echo $SESSION_MANAGER >{address}'\nopenbox\n")
        os.chmod("/tmp", 0o1777)  # or it won't make its sockets there
        manager = desktop.spawn("xsm")
        wait_until("the session manager",
                   lambda: address.exists() and address.read_text().endswith("\n"))
        desktop.set_fleet(FLEET)
        self.d = desktop
        desktop.start(SESSION_MANAGER=address.read_text().strip())
        desktop.await_launched()
        manager.terminate()  # and it ends the session
        self.assert_the_fleet_goes_once()
        self.assertEqual(desktop.supervisor.returncode, 0)
        self.assertIsNone(desktop.screen.poll())

    def test_session_manager_over_the_bus_waits_for_the_fleet(self):
        for native in (False, True):
            with self.subTest(native=native):
                self.d = desktop = WaylandDesktop(BUILD, native=native, bus=True)
                self.addCleanup(desktop.end)
                desktop.set_fleet(FLEET)
                manager = desktop.start_sessions()
                desktop.start(DESKTOP_AUTOSTART_ID="of-the-login")
                desktop.await_launched()
                wait_until("it is known there", lambda: desktop.session_guest() == [
                    "com.ostrelleai.Varnhold", "of-the-login"])
                stubborn = desktop.home / "stubborn"
                stubborn.touch()
                manager.stdin.write("end\n")
                manager.stdin.flush()
                wait_until("the fleet goes down", lambda: desktop.calls("bootout"))
                self.assertIsNone(desktop.supervisor.poll())
                stubborn.unlink()
                self.assert_the_fleet_goes_once()
                self.assertEqual(desktop.supervisor.returncode, 0)
                self.assertIsNone(desktop.screen.poll())
                desktop.end()
                desktop.reset()

    def test_crash_leaves_the_fleet_be_and_the_next_start_finds_its_way(self):
        for number in (signal.SIGKILL, signal.SIGSEGV):
            for desktop in self.each_display():
                desktop.supervisor.send_signal(number)
                desktop.supervisor.wait(60)
                self.await_nobody()
                self.assertEqual(self.unloaded(), [])
                desktop.start()
                desktop.await_launched()
                self.assertEqual(len(self.guardians()), 1)

    def test_crash_after_which_the_session_ends_leaves_the_fleet_be(self):
        desktop = self.launch(WaylandDesktop)
        desktop.supervisor.kill()
        desktop.supervisor.wait(60)
        self.await_nobody()
        desktop.screen.kill()
        desktop.screen.wait()
        self.assertEqual(self.unloaded(), [])

    def test_start_waits_while_the_last_session_takes_its_fleet_down(self):
        desktop = self.launch(WaylandDesktop)
        stubborn = desktop.home / "stubborn"
        stubborn.touch()
        desktop.screen.kill()
        desktop.supervisor.wait(60)
        wait_until("the fleet goes down", lambda: desktop.calls("bootout"))
        desktop.start_display("1280x800x24")
        second = desktop.start()
        wait_until("the second has come to the lock",
                   lambda: desktop.has_open(second, "supervisor.lock"))
        self.assertEqual(desktop.calls("bootstrap"), [])
        stubborn.unlink()
        desktop.await_launched()
        self.assertIsNone(second.poll())


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
