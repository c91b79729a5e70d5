"""docs/operating.md to the letter: its own blocks, in a root of the test's own."""

import datetime
import os
import re
import subprocess
import urllib.error
import urllib.request

from service import Nginx
from support import BIN, SNAPSHOT, SOURCE, ProgramTest

# What the blocks ask of the machine, and what the test has for it.
ELSEWHERE = ("apt-get ", "tools/build ", "useradd ", "nginx -t", "systemctl ")


def blocks():
    """The shell blocks of the document, in order."""
    text = (SOURCE / "docs/operating.md").read_text(encoding="utf-8")
    return re.findall(r"```sh\n(.*?)```", text, flags=re.DOTALL)


class Operating(ProgramTest):
    def setUp(self):
        super().setUp()
        self.root = self.container / "root"
        for folder in ("etc/nginx/sites-enabled", "var/lib/fexora", "var/www", "bin"):
            (self.root / folder).mkdir(parents=True)
        (self.root / "etc/nginx/sites-enabled/default").symlink_to(
            "/etc/nginx/sites-available/default")

    def sources(self):
        """A curl that brings the two sources as of today."""
        today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
        euro = SOURCE / "examples/data/eur-reference-2026-09-11.xml"
        for name, source in (("euro.xml", euro), ("usd.json", SNAPSHOT)):
            text = re.sub(r"2026-09-\d\d", today, source.read_text(encoding="utf-8"))
            (self.root / name).write_text(text, encoding="utf-8")
        curl = self.root / "bin/curl"
        curl.write_text(f'#!/bin/sh\nexec cp "{self.root}/$3" "$3"\n', encoding="utf-8")
        curl.chmod(0o755)

    def here(self, block):
        """The block for this root: its paths, and without what only a machine of its own has."""
        lines = [line for line in block.splitlines() if not line.startswith(ELSEWHERE)]
        text = re.sub(r"(?<![\w.])/(etc|var|usr)/", rf"{self.root}/\1/", "\n".join(lines))
        text = text.replace("build/release", str(BIN.parent)).replace("-o fexora ", "")
        return re.sub(r"su fexora -s /bin/sh -c ", "sh ", text)

    def test_the_blocks_make_a_service(self):
        self.sources()
        path = f"{self.root}/bin:{self.root}/usr/local/bin:{os.environ['PATH']}"
        for block in blocks():
            subprocess.run(["bash", "-euc", self.here(block)], cwd=SOURCE, check=True,
                           stdout=subprocess.DEVNULL, env={**os.environ, "PATH": path})
        sites = self.root / "etc/nginx/sites-enabled"
        self.assertEqual([site.name for site in sites.iterdir()], ["fexora-rates.conf"])
        nginx = Nginx(self, self.root / "var/www/fexora", self.root / "run",
                      sites / "fexora-rates.conf")
        env = self.environment(FEXORA_RATES_URL=nginx.url, no_proxy="*")
        self.assertEqual(self.json("refresh", env=env)["count"], 339)
        with self.assertRaises(urllib.error.HTTPError):
            urllib.request.urlopen(nginx.url + ".old")
