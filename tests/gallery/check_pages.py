#!/usr/bin/env python3
"""Checks every HTML page of a gallery folder: it parses, its elements are
properly nested, and every href and src leads to a file of the folder.
Prints one line per fault and exits with 1 when there was any."""
import os
import sys
import urllib.parse
from html.parser import HTMLParser

VOID = {"br", "img", "meta", "hr", "input", "link"}


class PageChecker(HTMLParser):
    def __init__(self, page, folder, faults):
        super().__init__(convert_charrefs=True)
        self.page, self.folder, self.faults = page, folder, faults
        self.stack = []
        self.images = 0

    def fault(self, text):
        self.faults.append(f"{self.page}:{self.getpos()[0]}: {text}")

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name in ("href", "src"):
                self.check_link(tag, value)
        if tag == "img":
            self.images += 1
        if tag not in VOID:
            self.stack.append(tag)

    def handle_startendtag(self, tag, attrs):
        self.handle_starttag(tag, attrs)
        if tag not in VOID:
            self.stack.pop()

    def handle_endtag(self, tag):
        if not self.stack or self.stack[-1] != tag:
            self.fault(f"</{tag}> closes {self.stack[-1:] or 'nothing'}")
            if tag in self.stack:
                while self.stack.pop() != tag:
                    pass
            return
        self.stack.pop()

    def check_link(self, tag, value):
        if value is None or value == "":
            self.fault(f"<{tag}> with an empty link")
            return
        parts = urllib.parse.urlsplit(value)
        if parts.scheme or parts.netloc or parts.query or parts.fragment:
            self.fault(f"<{tag}> link {value!r} is not a plain relative path")
            return
        target = os.path.join(os.fsencode(self.folder), urllib.parse.unquote_to_bytes(parts.path))
        if not os.path.isfile(target):
            self.fault(f"<{tag}> link {value!r} leads to no file")


def main():
    folder = sys.argv[1]
    faults = []
    pages = sorted(n for n in os.listdir(folder) if n.endswith(".html"))
    for page in pages:
        with open(os.path.join(folder, page), "rb") as f:
            text = f.read().decode("utf-8")
        checker = PageChecker(page, folder, faults)
        checker.feed(text)
        checker.close()
        if checker.stack:
            faults.append(f"{page}: unclosed {checker.stack}")
        print(f"{page} images={checker.images}")
    for fault in faults:
        print("FAULT " + fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
