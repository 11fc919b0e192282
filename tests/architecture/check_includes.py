#!/usr/bin/env python3
"""Compares every #include of src/ with the table of allowed edges between the layers.

docs/ARCHITECTURE.md explains the edges; this file enforces them. Also: core targets (sources that lie directly in a
folder) include no widget header, only one file calls runJavaScript, and only text/ changes case.
"""
import pathlib
import re
import sys

CHECKOUT = pathlib.Path(__file__).resolve().parents[2]
PLATFORM = {"platform/core", "platform/ui"}
CORES = {"browse", "search", "notes", "shell"}
ALLOWED = {
    "text": set(),
    "platform/core": {"text"},
    "platform/ui": {"text", "platform/core"},
    "data": {"text", "platform/core"},
    "browse": {"text", "platform/core", "data"},
    "browse/ui": {"text", "data", "browse"} | PLATFORM,
    "search": {"text", "platform/core", "data", "browse"},
    "search/ui": {"text", "data", "browse", "browse/ui", "search"} | PLATFORM,
    "notes": {"text", "platform/core"},
    "notes/ui": {"text", "notes"} | PLATFORM,
    "shell": {"text", "platform/core", "data", "browse", "search", "notes"},
    "shell/ui": {"text", "data", "browse", "browse/ui", "search", "search/ui", "notes", "notes/ui", "shell"} | PLATFORM,
    "tools": {"text", "platform/core", "data", "browse", "search", "notes"},
}
WIDGETS = re.compile(r"#\s*include\s*<(QtWidgets|QtWebEngine|QWidget|QApplication|(?!QStringView|QByteArrayView|QAnyStringView|QUtf8StringView|QLatin1StringView)Q\w*(Widget|View|Box|Dialog|Window|"
                     r"Button|Menu|Action|Label|Edit|Bar|Painter|Printer|Pixmap|Icon|Font|Cursor)\b)")
INCLUDE = re.compile(r'#\s*include\s*"([^"]+)"')
RULES = (
    (re.compile(r"\brunJavaScript\s*\("), re.compile(r"^platform/ui/"), "runJavaScript belongs to the web view wrapper"),
    (re.compile(r"\.(toLower|toUpper|toCaseFolded)\s*\("), re.compile(r"^text/"), "case is changed in text/ only"),
)


def layer_of(path):
    parts = path.split("/")
    two = "/".join(parts[:2])
    if two in ALLOWED:
        return two
    return parts[0] if parts[0] in ALLOWED else None


def faults(root):
    for file in sorted(root.rglob("*")):
        if file.suffix not in (".h", ".cpp"):
            continue
        name = file.relative_to(root).as_posix()
        own = layer_of(name)
        if own is None:
            yield f"{name}: lies in no layer"
            continue
        is_core = not own.endswith("/ui")
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            include = INCLUDE.search(line)
            if include:
                target = layer_of(include.group(1))
                if target is not None and target != own and target not in ALLOWED[own]:
                    yield f"{name}:{number}: {own} may not use {target}"
            if is_core and WIDGETS.search(line):
                yield f"{name}:{number}: a core includes a widget header"
            for pattern, home, reason in RULES:
                if pattern.search(line) and not home.search(name):
                    yield f"{name}:{number}: {reason}"


def main():
    root = (pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else CHECKOUT) / "src"
    found = list(faults(root))
    print("\n".join(found) if found else "every include follows the layers")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
