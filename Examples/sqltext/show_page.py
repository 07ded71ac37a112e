#!/usr/bin/env python3
"""Opens the mark-up of the example statement in headless Chromium, served by this machine beside the style sheet.

usage: show_page.py EXAMPLE_PROGRAM STYLE_SHEET [PICTURE.png]

The text of the page must be the SQL of the same statement, to the byte, and must be coloured. With a third argument the
page is also kept as a picture, as Docs/ shows it. The exit status is 77 where there is no Chromium, or one that doesn't
apply style sheets any more.
"""
import functools
import html.parser
import http.server
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading

SKIPPED = 77
PROBE = '<x xsl:version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">applied</x>'


class PreText(html.parser.HTMLParser):
    """The text inside of <pre>, and the classes of the elements there."""

    def __init__(self):
        super().__init__()
        self.inside, self.text, self.classes = False, "", set()

    def handle_starttag(self, tag, attrs):
        self.inside |= tag == "pre"
        if self.inside:
            self.classes.add(dict(attrs).get("class"))

    def handle_endtag(self, tag):
        self.inside &= tag != "pre"

    def handle_data(self, data):
        if self.inside:
            self.text += data


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *args):
        pass


def main():
    example, style_sheet = sys.argv[1:3]
    chromium = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
    if not chromium:
        print("skipped: no Chromium is installed")
        return SKIPPED

    def output(form):
        return subprocess.run([example, form], stdout=subprocess.PIPE, check=True).stdout

    with tempfile.TemporaryDirectory() as folder:
        page = pathlib.Path(folder, "page")
        page.mkdir()
        shutil.copy(style_sheet, page / "fixformatsql.xsl")
        (page / "statement.xml").write_bytes(output("markup"))
        (page / "probe.xsl").write_text(PROBE)
        (page / "probe.xml").write_text('<?xml-stylesheet type="text/xsl" href="probe.xsl"?><y/>')
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=page))
        threading.Thread(target=server.serve_forever, daemon=True).start()

        def browse(file, *options):
            # The banner tells users that Chromium will drop style sheets; it would lie across the picture.
            sandbox = ["--no-sandbox"] if os.geteuid() == 0 else []
            return subprocess.run([chromium, "--headless", "--disable-gpu", "--disable-dev-shm-usage", *sandbox,
                                   "--disable-blink-features=GenerateXSLTWarningBanner", f"--user-data-dir={folder}/user",
                                   *options, f"http://127.0.0.1:{server.server_port}/{file}"], stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, timeout=120, check=True).stdout.decode()

        if "applied" not in browse("probe.xml", "--dump-dom"):
            print("skipped: this Chromium doesn't apply style sheets to XML")
            return SKIPPED
        shown = PreText()
        shown.feed(browse("statement.xml", "--dump-dom"))
        sql = output("sql").decode()
        coloured = {"comment", "k", "bop", "fk", "op", "p", "f", "t", "g", "d"} <= shown.classes
        if shown.text != sql or not coloured:
            print(f"the page shows, with the classes {shown.classes}:\n{shown.text}\nbut the SQL is:\n{sql}")
            return 1
        if len(sys.argv) > 3:
            browse("statement.xml", "--window-size=600,830", f"--screenshot={os.path.abspath(sys.argv[3])}")
    print("the page shows the SQL")
    return 0


sys.exit(main())
