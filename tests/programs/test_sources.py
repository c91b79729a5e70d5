"""The named sources of rates, served on loopback over TLS as their own addresses would."""

import datetime
import json
import ssl
import subprocess
import time

from service import Service, answer
from support import ProgramTest, snapshot_rates

AUTHORITY = """
[ca]
default_ca = own
[own]
database = {folder}/index
new_certs_dir = {folder}
serial = {folder}/serial
default_md = sha256
policy = any
x509_extensions = address
[any]
commonName = supplied
[address]
subjectAltName = IP:127.0.0.1
"""


def certificate(folder, first, last):
    """A key with its own signed certificate, valid between two days, in one file."""
    folder.mkdir()
    (folder / "index").touch()
    (folder / "serial").write_text("01\n")
    (folder / "conf").write_text(AUTHORITY.format(folder=folder))
    for words in (["req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                   "-nodes", "-subj", "/CN=127.0.0.1", "-keyout", folder / "key",
                   "-out", folder / "request"],
                  ["ca", "-batch", "-selfsign", "-notext", "-config", folder / "conf",
                   "-keyfile", folder / "key", "-in", folder / "request",
                   "-out", folder / "certificate",
                   "-startdate", f"{first}000000Z", "-enddate", f"{last}000000Z"]):
        subprocess.run(["openssl", *words], check=True, capture_output=True)
    both = folder / "both.pem"
    both.write_text((folder / "certificate").read_text() + (folder / "key").read_text())
    return both


def table(day, **changes):
    rates = {code.lower(): rate for code, rate in snapshot_rates().items()} | changes
    return json.dumps({"date": day, "usd": rates})


def slow(day):
    """Nothing of it is wrong, but it never ends."""
    def send(connection):
        connection.sendall(b"HTTP/1.1 200 OK\r\n\r\n" + table(day).encode())
        while True:
            connection.sendall(b" ")
            time.sleep(0.1)
    return send


class Sources(ProgramTest):
    url = None  # no service is configured

    def setUp(self):
        super().setUp()
        self.folder = self.new_folder()
        self.pem = certificate(self.folder / "valid", "20200101", "21200101")
        self.service = self.serve(self.pem)
        self.day = datetime.date.today().isoformat()
        self.service.paths |= {
            "/usd.json": answer(table(self.day, eur=0.9)),
            "/euro.xml": answer(f"""<E><Cube><Cube time="{self.day}">
                <Cube currency="USD" rate="1.125"/>
                <Cube currency="GBP" rate="0.9"/></Cube></Cube></E>"""),
            "/none": answer("", status="404 Gone")}

    def serve(self, pem):
        service = Service(self)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(pem)
        service.server.socket = context.wrap_socket(service.server.socket, server_side=True)
        service.base = service.base.replace("http:", "https:")
        return service

    def environment(self, **changes):
        base = self.service.base
        return super().environment(**{
            "FEXORA_CA_FILE": str(self.pem), "FEXORA_SOURCES_ECB": f"{base}/euro.xml",
            "FEXORA_SOURCES_EXCHANGE_API": f"{base}/usd.json"} | changes)

    def asked(self):
        return [head.split()[1] for head in self.service.requests]

    def test_without_any_set_up_the_rates_are_fresh_after_one_command(self):
        self.assertIn("339 rates from exchange-api", self.succeed("refresh"))
        rates = self.json("100", "USD", "EUR", "JPY")
        self.assertEqual(rates["items"][0]["amount"], 90)
        self.assertEqual(rates["items"][1]["rate"], snapshot_rates()["JPY"])
        self.assertEqual([rates["rates"][key] for key in ("source", "origin", "state")],
                         ["exchange-api", "service", "fresh"])
        self.assertEqual(self.asked(), ["/usd.json"])
        self.assertNotIn("fexora refresh", self.succeed("1", "USD", "EUR"))

    def test_the_next_one_is_asked_where_one_fails(self):
        both = f"{self.service.base}/none {self.service.base}/usd.json"
        self.assertIn("from exchange-api", self.succeed("refresh", env=self.environment(
            FEXORA_SOURCES_EXCHANGE_API=both)))
        self.assertIn("3 rates from ecb", self.succeed("refresh", env=self.environment(
            FEXORA_SOURCES_EXCHANGE_API=f"{self.service.base}/none")))
        # What the narrow one lacks stays.
        self.assertEqual(self.json("status")["rates"], 339)
        self.assertIn("exchange-api)", self.succeed("1", "USD", "TRY"))
        self.assertEqual(self.asked(), ["/none", "/usd.json", "/none", "/euro.xml"])

    def test_the_setting_is_kept_and_said(self):
        self.assertIn("rates from  exchange-api, then ecb\n", self.succeed("status"))
        for word, asked, shown in (("ecb", ["/euro.xml"], "ecb"), ("nowhere", [], "nowhere"),
                                   ("automatic", ["/usd.json"], "exchange-api, then ecb")):
            self.assertEqual(self.succeed("settings", "ratesFrom", word), word + "\n")
            self.assertEqual(self.json("settings", "ratesFrom")["ratesFrom"], word)
            self.assertIn(f"rates from  {shown}", self.succeed("status"))
            self.service.requests.clear()
            code, _, err = self.run_program("refresh")
            self.assertEqual((code, self.asked()), (0 if asked else 3, asked), err)
        self.assertIn("exchange-api", self.reject(2, "settings", "ratesFrom", "somewhere"))
        # By name, once, whatever is set.
        self.succeed("settings", "ratesFrom", "nowhere")
        self.assertIn("fexora settings ratesFrom automatic", self.reject(3, "refresh"))
        self.assertIn("from ecb", self.succeed("refresh", "--from", "ecb"))

    def test_hosts_in_c_ask_the_same(self):
        def refresh(*words, **changes):
            code, out, err = self.run_program("refresh", "0", *words, program="test_c",
                                              env=self.environment(**changes))
            self.assertEqual((code, err), (0, ""))
            return [line.split() for line in out.splitlines()]

        self.assertEqual(refresh("", "ecb"), [["0", "exchange-api", "0.90000000000000002"],
                                              ["0", "ecb", "0.88888888888888884"]])
        # Both are kept for the questions after the past, as the bank and as the dollar's table.
        for source, rate in (("ecb", 1.125), ("usd", 1 / 0.9)):
            found = self.json("1", "EUR", "USD", "--on", self.day, "--source", source)["items"][0]
            self.assertEqual((found["day"], found["source"]), (self.day, source))
            self.assertAlmostEqual(found["rate"], rate, 14)
        self.service.paths["/slow"] = slow(self.day)
        self.service.requests.clear()
        base = self.service.base
        env = self.environment(FEXORA_SOURCES_EXCHANGE_API=f"{base}/slow")
        code, out, _ = self.run_program("refresh", "1", "", "exchange-api", program="test_c",
                                        env=env)
        self.assertEqual([line.split()[:2] for line in out.splitlines()],
                         [["0", "ecb"], ["8", "ecb"]])
        self.assertEqual(self.asked(), ["/slow", "/euro.xml", "/slow"])
        self.succeed("settings", "ratesFrom", "nowhere")
        self.assertEqual(refresh("")[0][0], "10")

    def test_who_lies_or_cannot_prove_who_it_is_gets_nowhere(self):
        self.service.paths["/slow"] = slow(self.day)
        late = self.start("refresh", "--from", "exchange-api", "--json", env=self.environment(
            FEXORA_CONTAINER=str(self.new_folder()),
            FEXORA_SOURCES_EXCHANGE_API=f"{self.service.base}/slow"))
        plain = Service(self, answer(table(self.day)))
        old = certificate(self.folder / "expired", "20200101", "20210101")
        expired = self.serve(old)
        self.pem.write_text(self.pem.read_text() + old.read_text())
        stranger = self.serve(certificate(self.folder / "stranger", "20200101", "21200101"))
        expired.script = stranger.script = answer(table(self.day))
        self.service.paths["/lead"] = answer("", f"Location: {plain.url}", status="302 Found")
        self.service.paths["/lies"] = answer(table(self.day, eur=88, gbp=75, jpy=1.57))
        self.service.paths["/login"] = answer("<html><body>Log in</body></html>")
        self.service.paths["/part"] = answer(table(self.day))[:-900]
        for address, kind, part in (
                (plain.url, "noAddress", "https only"),
                (f"{expired.base}/x", "notTrusted", "expired"),
                (f"{stranger.base}/x", "notTrusted", "self-signed"),
                (f"{self.service.base}/lead", "httpStatus", "https"),
                (f"{self.service.base}/lies", "taken", "left out"),
                (f"{self.service.base}/login", "source", "no reference rates"),
                (f"{self.service.base}/part", "noConnection", "part")):
            with self.subTest(address):
                env = self.environment(FEXORA_SOURCES_EXCHANGE_API=address)
                code, out, err = self.run_program("refresh", "--from", "exchange-api", "--json",
                                                  env=env)
                self.assertIn(part, err)
                if kind != "taken":
                    self.assertEqual((code, json.loads(out)["error"]["kind"]), (3, kind), err)
        self.assertEqual(plain.requests, [])
        out, err = late.communicate(timeout=120)
        self.assertEqual((late.returncode, json.loads(out)["error"]["kind"]), (3, "timeOut"), err)
        # Of those that were left out the older rates stay.
        self.assertIn("(rate of 29 September, bundled)", self.succeed("1", "USD", "EUR"))
