"""The document that the figures stand in: what is between two marks is written anew, all else is prose.

    <!-- figures: NAME -->
    ...
    <!-- end of figures -->
"""

import pathlib
import re


class Document:
    def __init__(self, file):
        self.file = pathlib.Path(file)

    def replace(self, name, text):
        """Read and written at once, so that prose may be worked on meanwhile."""
        found = self.file.read_text()
        begin, end = f"<!-- figures: {name} -->\n", "<!-- end of figures -->"
        pattern = re.compile(f"({re.escape(begin)}).*?({re.escape(end)})", re.DOTALL)
        if len(pattern.findall(found)) != 1:
            raise SystemExit(f"{self.file} has no one place for {name}")
        self.file.write_text(pattern.sub(lambda marks: f"{marks[1]}\n{text.strip()}\n\n{marks[2]}", found))

    def picture(self, name, text):
        folder = self.file.parent / "pictures"
        folder.mkdir(exist_ok=True)
        (folder / name).write_text(text)
