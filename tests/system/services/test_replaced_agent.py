"""An agent that ends and comes back while somebody kicks it, under a stand-in for a user manager.

The stand-in knows one job, and ends its agent and has another at the moment that matters.
Each test runs in a sandbox of its own: test_replaced_agent.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import subprocess
import threading

from gi.repository import Gio, GLib

from harness import SILENT, ServicesCase, main

LABEL = "com.example.agent"
MANAGER = Gio.DBusNodeInfo.new_for_xml("""<node><interface name='org.freedesktop.systemd1.Manager'>
    <method name='ListUnitsByPatterns'><arg type='as'/><arg type='as'/>
        <arg type='a(ssssssouso)' direction='out'/></method>
    <method name='KillUnit'><arg type='s'/><arg type='s'/><arg type='i'/></method>
    </interface></node>""").interfaces[0]
SERVICE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name='org.freedesktop.systemd1.Service'>
    <property name='MainPID' type='u' access='read'/></interface></node>""").interfaces[0]


class StandIn:
    def __init__(self, socket):
        self.agents = [subprocess.Popen(["/bin/sleep", "1000"]) for _ in range(2)]
        socket.parent.mkdir()
        self.server = Gio.DBusServer.new_sync(f"unix:path={socket}", Gio.DBusServerFlags.NONE,
                                              Gio.dbus_generate_guid(), None, None)
        self.server.connect("new-connection", self.serve)
        self.server.start()
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def serve(self, _, connection):
        self.connection = connection
        connection.register_object("/org/freedesktop/systemd1", MANAGER, self.call, None, None)
        connection.register_object("/unit", SERVICE, None, self.get, None)
        return True

    def call(self, _connection, _sender, _path, _interface, method, values, invocation):
        if method == "KillUnit":
            os.kill(self.agents[-1].pid, values[2])
            invocation.return_value(None)
            return
        unit = (f"varnhold-job-{LABEL}.service", "", "loaded", "active", "running", "", "/unit", 0,
                "", "/")
        invocation.return_value(GLib.Variant("(a(ssssssouso))", ([unit],)))

    def get(self, *_):
        """The first who asks hears of an agent that has ended when he hears it."""
        told = self.agents[0] if self.agents[0].poll() is None else self.agents[1]
        self.agents[0].kill()
        self.agents[0].wait()
        return GLib.Variant("u", told.pid)


class ReplacedAgentTest(ServicesCase):
    def test_kickstart_k_spares_an_agent_that_has_come_since(self):
        job = self.job(LABEL)
        folder = self.runtime / "jobs" / LABEL
        folder.mkdir(parents=True)
        for each in (self.runtime, folder.parent, folder):
            each.chmod(0o700)
        shutil.copy(job.path, folder / "job.plist")
        manager = StandIn(pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "systemd/private")
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.assertIsNotNone(manager.agents[0].poll())
        self.assertIsNone(manager.agents[1].poll())


if __name__ == "__main__":
    main()
