#!/usr/bin/env python3
"""Compares every #include of src/ with the table of allowed edges between the layers.

docs/ARCHITECTURE.md explains the edges; this file enforces them. Also: core targets (sources that lie directly in a
folder) include no widget header, only one file calls runJavaScript, and only text/ changes case.
"""
import pathlib
import re
import sys

PLATFORM = {"platform/core", "platform/ui"}
ALLOWED = {
    "text": set(),
    "platform/core": {"text"},
    "platform/ui": {"text", "platform/core"},
    "data": {"text", "platform/core"},
    "browse": {"text", "platform/core", "data"},
    "browse/ui": {"text", "data", "browse"} | PLATFORM,
    "search": {"text", "platform/core", "data", "browse"},
    "search/ui": {"text", "data", "browse", "browse/ui", "search"} | PLATFORM,
    "notes": {"text", "platform/core", "search"},
    "notes/ui": {"text", "notes"} | PLATFORM,
    "desk": {"text", "platform/core", "data", "browse", "search", "notes"},
    "desk/ui": {"text", "data", "browse", "browse/ui", "search", "search/ui", "notes", "desk"} | PLATFORM,
    "shell": {"text", "platform/core", "data", "browse", "search", "notes", "desk"},
    "shell/ui": {"text", "data", "browse", "browse/ui", "search", "search/ui", "notes", "notes/ui", "desk", "desk/ui", "shell"} | PLATFORM,
    "tools": {"text", "platform/core", "data", "browse", "search", "notes"},
}
WIDGETS = re.compile(r"#\s*include\s*<(QtWidgets|QtWebEngine|QWidget|QApplication|(?!Q(String|ByteArray|AnyString|Utf8String|Latin1String)View)"
                     r"Q\w*(Widget|View|Box|Dialog|Window|Button|Menu|Action|Label|Edit|Bar|Painter|Printer|Pixmap|Icon|Font|Cursor)\b)")
INCLUDE = re.compile(r'#\s*include\s*"([^"]+)"')
RULES = (  # pattern, where it may not stand, reason
    (WIDGETS, re.compile(r"^(?!.*/ui/)"), "a core includes a widget header"),
    (re.compile(r"\brunJavaScript\s*\("), re.compile(r"^(?!platform/ui/)"), "runJavaScript belongs to the web view wrapper"),
    (re.compile(r"\.(toLower|toUpper|toCaseFolded)\s*\("), re.compile(r"^(?!text/)"), "case is changed in text/ only"),
)


def layer_of(path):
    parts = path.split("/")
    return next((layer for layer in ("/".join(parts[:2]), parts[0]) if layer in ALLOWED), None)


def faults(root):
    for file in sorted(path for path in root.rglob("*") if path.suffix in (".h", ".cpp")):
        name = file.relative_to(root).as_posix()
        own = layer_of(name)
        if own is None:
            yield f"{name}: lies in no layer"
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            include = INCLUDE.search(line)
            target = layer_of(include.group(1)) if include else None
            if target not in ALLOWED[own] | {own, None}:
                yield f"{name}:{number}: {own} may not use {target}"
            for pattern, forbidden, reason in RULES:
                if pattern.search(line) and forbidden.search(name):
                    yield f"{name}:{number}: {reason}"


root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[2]) / "src"
found = list(faults(root))
print("\n".join(found) if found else "every include follows the layers")
sys.exit(bool(found))
