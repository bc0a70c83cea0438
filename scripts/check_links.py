#!/usr/bin/env python3
"""Checks the documents of the tree: links to files and headings, and pictures.

    scripts/check_links.py [FOLDER]    the tree to check; default: the one that the script lies in

A link must lead to a file of the tree, and what stands behind # to a heading of it; a picture must be at most 150 KB large; each
file of docs/ must be reached from README.md; and a file of scripts/, docs/ and so on that a text names must exist. Addresses on
the web are not asked. Prints each fault; exit code 1 if there is one.
"""

import os
import re
import sys
from pathlib import Path
from urllib.parse import unquote

MOST_PICTURE = 150_000  # bytes
LINK = re.compile(r"(!?)\[(?:[^\[\]]|\[[^\]]*\])*\]\(\s*<?([^)\s>]+)>?[^)]*\)")
TREE_FILE = re.compile(r"`(?:\./)?((?:scripts|docs|src|tests|bench|fuzz|resources|packaging|cmake)/[\w./-]*\w)")


def prose_of(text):
    """The text without code blocks: fenced ones, and those indented by four blanks behind an empty line."""
    lines, fence, code, empty = [], None, False, True
    for line in text.splitlines():
        mark = re.match(r"\s*(```+|~~~+)", line)
        if fence:
            if mark and mark[1].startswith(fence):
                fence = None
            lines.append("")
            continue
        if mark:
            fence = mark[1]
            lines.append("")
            continue
        indented = line.startswith(("    ", "\t"))
        code = indented and (empty or code)
        empty = not line.strip()
        lines.append("" if code else line)
    return lines


def anchors_of(text):
    """The anchors of the headings, as the usual viewers of Markdown make them."""
    anchors, seen = set(), {}
    for line in prose_of(text):
        heading = re.match(r"#{1,6}\s+(.*?)\s*#*\s*$", line)
        if not heading:
            continue
        title = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading[1]).replace("`", "")
        anchor = re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")
        count = seen.get(anchor, 0)
        seen[anchor] = count + 1
        anchors.add(f"{anchor}-{count}" if count else anchor)
    return anchors


def documents_of(tree):
    skipped = {"build", "demo", ".git", "node_modules"}
    for folder, folders, names in os.walk(tree):
        folders[:] = sorted(f for f in folders if f not in skipped and not f.startswith("."))
        for name in sorted(names):
            if name.endswith(".md"):
                yield Path(folder) / name


def without_code(line):
    return re.sub(r"`[^`]*`", lambda code: " " * len(code[0]), line)


class Check:
    def __init__(self, tree):
        self.tree = tree
        self.texts = {path: path.read_text(encoding="utf-8") for path in documents_of(tree)}
        self.faults = []
        self.links = 0
        self.reached = {}  # document: the documents and pictures that it leads to

    def run(self):
        for path, text in self.texts.items():
            self.reached[path] = set()
            for number, line in enumerate(prose_of(text), 1):
                for link in LINK.finditer(without_code(line)):
                    self.links += 1
                    self.follow(path, number, link[2], bool(link[1]))
                for name in TREE_FILE.findall(line):
                    if "." in Path(name).name and "NAME" not in name and not (self.tree / name).exists():
                        self.fault(path, number, f"there is no {name}")
        self.find_lost()
        return not self.faults

    def follow(self, path, number, target, is_picture):
        if re.match(r"[a-z][a-z0-9+.-]*:", target):
            return
        name, _, anchor = unquote(target).partition("#")
        file = (path.parent / name).resolve() if name else path
        if not file.exists() or not file.is_relative_to(self.tree):
            self.fault(path, number, f"{target}: there is no such file")
            return
        self.reached[path].add(file)
        if is_picture and file.stat().st_size > MOST_PICTURE:
            self.fault(path, number, f"{name}: {file.stat().st_size} bytes, more than {MOST_PICTURE}")
        if anchor and file.suffix == ".md":
            text = self.texts.get(file) or file.read_text(encoding="utf-8")
            if anchor not in anchors_of(text):
                self.fault(path, number, f"{target}: there is no such heading")

    def find_lost(self):
        """Documents and pictures that nobody comes to from the README."""
        found, waiting = set(), [self.tree / "README.md"]
        while waiting:
            path = waiting.pop()
            if path in found:
                continue
            found.add(path)
            waiting.extend(self.reached.get(path, ()))
        for file in sorted((self.tree / "docs").rglob("*")):
            if file.is_file() and file.resolve() not in found:
                self.fault(file, 0, "no link leads here from README.md")

    def fault(self, path, number, text):
        place = f"{path.relative_to(self.tree)}:{number}" if number else str(path.relative_to(self.tree))
        self.faults.append(f"{place}: {text}")


def main():
    tree = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent).resolve()
    check = Check(tree)
    good = check.run()
    for fault in check.faults:
        print(fault)
    print(f"{len(check.texts)} documents, {check.links} links, {len(check.faults)} faults")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
