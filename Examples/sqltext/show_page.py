#!/usr/bin/env python3
"""Opens the mark-up of the example statement in headless Chromium, served by this machine beside the style sheet.

usage: show_page.py EXAMPLE_PROGRAM STYLE_SHEET [PICTURE.png]

The text of the page must be the SQL of the same statement, to the byte, and must be coloured. With a third argument the
page is also kept as a picture, as Docs/ shows it. The commands that make and serve the page are those of the guide. The
exit status is 77 where there is no Chromium, or one that doesn't apply style sheets any more.
"""
import html.parser
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile

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


def boxes(page, kind):
    text = (pathlib.Path(__file__).resolve().parents[2] / "Docs" / page).read_text()
    return re.findall(rf"^```{kind}\n(.*?)^```$", text, re.M | re.S)


def main():
    example, style_sheet = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    serve, convert = boxes("sqltext.md", "sh")
    sql = subprocess.run([example, "sql"], stdout=subprocess.PIPE, check=True).stdout.decode()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "build/release").mkdir(parents=True)
        (folder / "build/release/bin").symlink_to(example.parent)
        (folder / "Configuration").symlink_to(style_sheet.parent)
        # Any free port, and the server's process in place of the shell's.
        serve = serve.replace("8000", "0").replace("python3", "exec python3")
        server = subprocess.Popen(["bash", "-ec", serve], cwd=folder, env=os.environ | {"PYTHONUNBUFFERED": "1"},
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            port = re.search(rb"port (\d+)", server.stdout.readline())[1].decode()
            if shutil.which("xsltproc"):
                subprocess.run(convert, shell=True, cwd=folder, check=True)
                if not is_right("xsltproc", (folder / "page/statement.html").read_text(), sql):
                    return 1
            return show(folder, f"http://127.0.0.1:{port}", sql)
        finally:
            server.send_signal(signal.SIGINT)
            server.wait()


def is_right(program, page, sql):
    shown = PreText()
    shown.feed(page)
    if shown.text == sql and {"comment", "k", "bop", "fk", "op", "p", "f", "t", "g", "d"} <= shown.classes:
        return True
    print(f"{program} shows, with the classes {shown.classes}:\n{shown.text}\nbut the SQL is:\n{sql}")
    return False


def show(folder, server, sql):
    chromium = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
    if not chromium:
        print("skipped: no Chromium is installed")
        return SKIPPED
    (folder / "page/probe.xsl").write_text(PROBE)
    (folder / "page/probe.xml").write_text('<?xml-stylesheet type="text/xsl" href="probe.xsl"?><y/>')

    def browse(file, *options):
        # The banner tells users that Chromium will drop style sheets; it would lie across the picture.
        sandbox = ["--no-sandbox"] if os.geteuid() == 0 else []
        return subprocess.run([chromium, "--headless", "--disable-gpu", "--disable-dev-shm-usage", *sandbox,
                               "--disable-blink-features=GenerateXSLTWarningBanner", f"--user-data-dir={folder}/user",
                               *options, f"{server}/{file}"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              timeout=120, check=True).stdout.decode()

    if "applied" not in browse("probe.xml", "--dump-dom"):
        print("skipped: this Chromium doesn't apply style sheets to XML")
        return SKIPPED
    if not is_right("the page", browse("statement.xml", "--dump-dom"), sql):
        return 1
    if len(sys.argv) > 3:
        browse("statement.xml", "--window-size=600,830", f"--screenshot={os.path.abspath(sys.argv[3])}")
    print("the page shows the SQL")
    return 0


sys.exit(main())
