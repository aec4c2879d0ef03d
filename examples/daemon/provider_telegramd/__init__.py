"""A stand-in for the chat bot daemon: it looks and behaves like one, and talks to nobody."""
