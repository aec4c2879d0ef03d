"""A window that starts a desktop entry at a press, in the way that launchers do.

launcher.py ENTRY
"""

import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gio, Gtk  # noqa: E402


def show(app):
    window = Gtk.ApplicationWindow(application=app, title="Launcher", default_width=1200,
                                   default_height=700)
    entry = Gio.DesktopAppInfo.new_from_filename(sys.argv[1])
    press = Gtk.GestureClick()
    press.connect("pressed", lambda *_: entry.launch(
        [], window.get_display().get_app_launch_context()))
    window.add_controller(press)
    window.present()


launcher = Gtk.Application(application_id="org.example.Launcher")
launcher.connect("activate", show)
launcher.run([])
