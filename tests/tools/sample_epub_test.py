#!/usr/bin/env python3
"""sample_epub_test EPUB COMPANION SAMPLES: the sample book keeps the rules of its format, as far as they can be told here
(epubcheck tells the rest where it is installed), and `ekle` gives every word of the texts that it was made from."""
import json
import posixpath
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import zipfile
from html.parser import HTMLParser
from pathlib import Path
from xml.etree import ElementTree

OPF, XHTML = "{http://www.idpf.org/2007/opf}", "{http://www.w3.org/1999/xhtml}"


def check_structure(path):
    epub = zipfile.ZipFile(path)
    assert epub.testzip() is None
    names = epub.namelist()
    first = epub.infolist()[0]
    assert first.filename == "mimetype" and first.compress_type == zipfile.ZIP_STORED and not first.extra
    assert epub.read("mimetype") == b"application/epub+zip"
    assert len(set(names)) == len(names)
    container = ElementTree.fromstring(epub.read("META-INF/container.xml"))
    package_name = next(container.iter("{urn:oasis:names:tc:opendocument:xmlns:container}rootfile")).get("full-path")
    package = ElementTree.fromstring(epub.read(package_name))
    base = posixpath.dirname(package_name)
    items = {item.get("id"): item for item in package.iter(OPF + "item")}
    assert len(items) == len(list(package.iter(OPF + "item"))), "ids that are not unique"
    listed = {posixpath.join(base, item.get("href")) for item in items.values()}
    assert listed == set(names) - {"mimetype", "META-INF/container.xml", package_name}, "manifest and files differ"
    unique = package.get("unique-identifier")
    assert any(e.get("id") == unique and e.text for e in package.iter("{http://purl.org/dc/elements/1.1/}identifier"))
    spine = [items[ref.get("idref")].get("href") for ref in package.iter(OPF + "itemref")]
    assert len(set(spine)) == len(spine) > 0
    for item in items.values():
        if item.get("media-type") != "application/xhtml+xml":
            continue
        page = ElementTree.fromstring(epub.read(posixpath.join(base, item.get("href"))))  # well-formed or an exception
        for element in page.iter():
            target = element.get("src") or element.get("href")
            if target:
                at = posixpath.normpath(posixpath.join(base, posixpath.dirname(item.get("href")), target))
                assert at in names, f"{item.get('href')}: {target} is missing"
    navs = [item for item in items.values() if item.get("properties") == "nav"]
    assert len(navs) == 1
    page = ElementTree.fromstring(epub.read(posixpath.join(base, navs[0].get("href"))))
    assert [a.get("href") for a in page.iter(XHTML + "a")] == spine, "contents and reading order differ"
    if shutil.which("epubcheck"):
        subprocess.run(["epubcheck", "--failonwarnings", path], check=True)


class Words(HTMLParser):
    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.text = ""
        self.feed(text)
        self.close()
        self.words = re.findall(r"[^\W_]+", self.text)

    def handle_starttag(self, tag, attrs):
        if tag.lower() in ("p", "td", "br", "tr", "table", "h2"):
            self.text += " "

    def handle_data(self, data):
        self.text += data


def check_words(path, companion, samples):
    with tempfile.TemporaryDirectory() as folder:
        library = folder + "/k.vq"
        subprocess.run([companion, "ekle", library, path], check=True, stdout=subprocess.DEVNULL)
        rows = sqlite3.connect(library)
        rows.create_collation("TURKCE", lambda a, b: (a > b) - (a < b))
        added = [Words(text).words for (text,) in rows.execute("SELECT Konu FROM tbl_Konu ORDER BY ID")]
    author = json.loads((samples / "kitaplik.json").read_text("utf-8"))["yazarlar"][1]
    source = []
    for book in sorted(author["kitaplar"], key=lambda b: b.get("sira", 0)):
        for topic in book["konular"]:
            source.append(Words(topic["baslik"]).words + Words((samples / topic["dosya"]).read_text("utf-8")).words)
    assert len(added) == len(source), f"{len(added)} topics, {len(source)} expected"
    for mine, theirs in zip(added, source):
        assert mine == theirs, f"{[w for w in zip(mine, theirs) if w[0] != w[1]][:3]}"
    assert sum(map(len, source)) > 10_000, "hardly any text was compared"


check_structure(sys.argv[1])
check_words(sys.argv[1], sys.argv[2], Path(sys.argv[3]))
