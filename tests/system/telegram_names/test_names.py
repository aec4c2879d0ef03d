"""Bots' names over the real network classes, from a server that does what its callers' tokens say.

Each test runs in a sandbox and a process of its own: test_names.py BUILD_FOLDER TEST_NAME
"""

import http.server
import json
import pathlib
import subprocess
import sys
import threading
import unittest
import urllib.parse

PATIENCE = 120  # seconds; every run ends in a fraction of it unless something is broken
LONG_SILENCE = 60_000  # milliseconds, as in the program; no test waits for it
SHORT_SILENCE = 300
MANY = 40  # more than the toolkit has connections to one server


def named(name):
    return json.dumps({"ok": True, "result": {"id": 1, "first_name": name}}).encode()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        token = urllib.parse.unquote(self.path).removeprefix("/bot").removesuffix("/getMe")
        self.server.paths.append(self.path)
        behaviour, _, name = token.partition(":")
        getattr(self, behaviour, self.junk)(name)

    def answer(self, name, status=200):
        self.reply(named(name), status)

    def reply(self, body, status=200, promised=None):
        self.send_response(status)
        self.send_header("Content-Length", str(promised or len(body)))
        self.end_headers()
        self.wfile.write(body)

    def named_in_an_error(self, name):
        self.answer(name, 500)

    def missing(self, name):
        self.answer(name, 404)

    def unauthorized(self, _):
        self.reply(b'{"ok":false,"error_code":401,"description":"Unauthorized"}', 401)

    def hang(self, _):
        self.server.over.wait(PATIENCE)
        self.close_connection = True

    def hang_in_the_body(self, name):
        self.reply(named(name), promised=10_000)
        self.hang(name)

    def drip(self, name):
        """Slower in all than the silence allowed, but never silent for so long."""
        body = named(name)
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        for at in range(len(body)):
            self.wfile.write(body[at:at + 1])
            self.wfile.flush()
            self.server.over.wait(0.02)

    def cut(self, name):
        """A whole name, and then less of the body than was promised."""
        self.reply(named(name), promised=10_000)
        self.close_connection = True

    def cut_at_once(self, _):
        self.close_connection = True

    def junk(self, _):
        self.reply(b"\x00\xff{]" * 100)

    def no_http(self, _):
        self.wfile.write(b"\x00\x01 what is this\r\n\r\n")
        self.close_connection = True

    def huge(self, name):
        self.reply(named(name)[:-1] + b', "pad": "' + b"x" * 50_000_000 + b'"}')

    def huge_junk(self, _):
        self.reply(b"[" * 50_000_000)

    def moved(self, name):
        self.send_response(302)
        self.send_header("Location", f"/botanswer:{name}/getMe")
        self.send_header("Content-Length", "0")
        self.end_headers()

    def together(self, name):
        """Answers nobody until all have asked."""
        self.server.all_asked.wait(PATIENCE)
        self.answer(name)

    def log_message(self, *_):
        pass


class NamesTest(unittest.TestCase):
    def setUp(self):
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.server.daemon_threads = True
        self.server.paths = []
        self.server.over = threading.Event()
        self.server.all_asked = threading.Barrier(MANY)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        self.addCleanup(self.server.over.set)

    def titles(self, *tokens, silence=LONG_SILENCE, address=None):
        address = address or f"http://127.0.0.1:{self.server.server_port}"
        run = subprocess.run([PROGRAM, address, str(silence), *tokens], check=True,
                             capture_output=True, text=True, timeout=PATIENCE)
        *titles, completions = run.stdout.splitlines()
        self.assertEqual(completions, "completions 1")
        return titles

    def test_puts_each_answer_in_its_place(self):
        tokens = [f"answer:Name {i} ⚖️" for i in range(30)]
        self.assertEqual(self.titles(*tokens), [t.removeprefix("answer:") for t in tokens])

    def test_asks_at_the_address_of_the_token(self):
        self.titles("answer:A")
        self.assertEqual(self.server.paths, ["/botanswer:A/getMe"])

    def test_asks_for_all_at_once(self):
        names = [str(i) for i in range(MANY)]
        self.assertEqual(self.titles(*(f"together:{name}" for name in names)), names)

    def test_takes_a_name_from_a_reply_of_any_status(self):
        self.assertEqual(self.titles("named_in_an_error:A", "missing:B", "answer:C"),
                         ["A", "B", "C"])

    def test_keeps_the_title_where_the_reply_is_an_error(self):
        self.assertEqual(self.titles("unauthorized:A", "answer:B"), ["Old", "B"])

    def test_ends_a_request_that_hangs(self):
        self.assertEqual(self.titles("hang:A", "answer:B", "hang_in_the_body:C",
                                     silence=SHORT_SILENCE), ["Old", "B", "Old"])

    def test_has_patience_with_a_slow_reply_that_never_falls_silent(self):
        self.assertEqual(self.titles("drip:Slow", silence=2_000), ["Slow"])

    def test_keeps_the_title_where_the_connection_is_cut(self):
        self.assertEqual(self.titles("cut:A", "cut_at_once:B", "answer:C"), ["Old", "Old", "C"])

    def test_keeps_the_title_where_junk_comes(self):
        self.assertEqual(self.titles("junk:A", "no_http:B", "answer:C"), ["Old", "Old", "C"])

    def test_takes_fifty_megabytes(self):
        self.assertEqual(self.titles("huge:A", "huge_junk:B", "answer:C"), ["A", "Old", "C"])

    def test_follows_a_redirection(self):
        self.assertEqual(self.titles("moved:A"), ["A"])

    def test_keeps_all_titles_where_nobody_listens(self):
        self.assertEqual(self.titles("answer:A", "answer:B", address="http://127.0.0.1:1"),
                         ["Old", "Old"])

    def test_keeps_the_title_where_the_token_forms_no_good_address(self):
        tokens = ["", " ", "#", "?", "%", "a b/../..", "é", "[", "\\", "\n"]
        self.assertEqual(self.titles(*tokens, "answer:A"), ["Old"] * len(tokens) + ["A"])

    def test_completes_where_there_is_nobody_to_ask_for(self):
        self.assertEqual(self.titles(), [])

    def test_keeps_all_titles_where_no_name_can_be_looked_up(self):
        names = [f"answer:{i}" for i in range(MANY)]
        self.assertEqual(self.titles(*names, address="http://nowhere.invalid"), ["Old"] * MANY)

    def test_completes_where_the_address_is_none(self):
        self.assertEqual(self.titles("answer:A", address="nothing://"), ["Old"])


if __name__ == "__main__":
    PROGRAM = pathlib.Path(sys.argv.pop(1)) / "tests/fetch_names"
    unittest.main()
