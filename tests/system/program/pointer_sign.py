"""What the pointer looks like on a display, as the display itself tells it (XFixes)."""

import ctypes

FORBIDDING = (0xB3, 0x26, 0x1D)  # the red of the sign that a drop would do nothing


class CursorImage(ctypes.Structure):
    _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short),
                ("width", ctypes.c_ushort), ("height", ctypes.c_ushort),
                ("xhot", ctypes.c_ushort), ("yhot", ctypes.c_ushort),
                ("serial", ctypes.c_ulong), ("pixels", ctypes.POINTER(ctypes.c_ulong)),
                ("atom", ctypes.c_ulong), ("name", ctypes.c_char_p)]


X11 = ctypes.CDLL("libX11.so.6")
XFIXES = ctypes.CDLL("libXfixes.so.3")
X11.XOpenDisplay.restype = ctypes.c_void_p
X11.XOpenDisplay.argtypes = [ctypes.c_char_p]
X11.XCloseDisplay.argtypes = [ctypes.c_void_p]
X11.XFree.argtypes = [ctypes.c_void_p]
XFIXES.XFixesQueryVersion.argtypes = [ctypes.c_void_p] + 2 * [ctypes.POINTER(ctypes.c_int)]
XFIXES.XFixesGetCursorImage.restype = ctypes.POINTER(CursorImage)
XFIXES.XFixesGetCursorImage.argtypes = [ctypes.c_void_p]


def pixels(display):
    """Of the pointer: red, green, blue of each that isn't clear."""
    connection = X11.XOpenDisplay(display.encode())
    assert connection, f"no display {display}"
    try:
        XFIXES.XFixesQueryVersion(connection, ctypes.c_int(), ctypes.c_int())
        image = XFIXES.XFixesGetCursorImage(connection)
        shown = image.contents
        words = shown.pixels[:shown.width * shown.height]
        X11.XFree(image)
    finally:
        X11.XCloseDisplay(connection)
    return [(word >> 16 & 0xFF, word >> 8 & 0xFF, word & 0xFF)
            for word in words if word >> 24 & 0xFF]


def forbids(display):
    """Whether it says that a drop would do nothing."""
    return sum(pixel == FORBIDDING for pixel in pixels(display)) > 20
