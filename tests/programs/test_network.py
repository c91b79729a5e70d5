"""Whatever a service can answer: the right kind of error, the cached rates, within the limits."""

import json
import os
import resource
import socket
import struct

from service import LIMIT, PACKED, ServedTest, answer, gzip

BODY = json.dumps({"serviceMessage": "hello",
                   "rates": [{"code": "EUR", "rate": 0.85}, {"code": "USD", "rate": 1}]})
HEAD = b"HTTP/1.1 200 OK\r\nConnection: close\r\n"
CHUNKED = HEAD + b"Transfer-Encoding: chunked\r\n\r\n"
# What one answer may cost in memory, whatever it holds. Sanitizers keep freed memory for a while.
MEMORY = (768 if os.environ.get("FEXORA_SANITIZED") == "1" else 192) << 10
WORDS = {"noConnection": "no connection", "notJson": "not JSON", "notAnObject": "not an object",
         "tooLarge": "too large", "httpStatus": "HTTP status"}


def endless(head, piece):
    def script(connection):
        connection.sendall(head)
        while True:
            connection.sendall(piece)
    return script


def broken_off(head):
    def script(connection):
        connection.sendall(head)
        connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    return script


def redirect(target, status="302 Found"):
    return answer("<html>moved</html>", f"Location: {target}", status=status)


class Answers(ServedTest):
    def setUp(self):
        super().setUp()
        self.accept(answer(BODY))

    def accept(self, *scripts):
        for self.service.script in scripts:
            self.assertEqual(self.json("refresh")["message"], "hello")
        self.before = self.store.read_bytes()

    def reject_each(self, kind, *scripts, status=""):
        for self.service.script in scripts:
            with self.subTest(str(self.service.script)[:200]):
                error = self.failure(3, "refresh")
                self.assertEqual(error["kind"], kind, error)
                for part in (self.url, f"{WORDS[kind]} {status}".strip(),
                             "cached rates stay: rates of"):
                    self.assertIn(part, error["message"])
                self.assertEqual(self.store.read_bytes(), self.before)

    def test_good_ones_in_each_form(self):
        whole = BODY.encode()
        chunks = b"5\r\n%s\r\n%x\r\n%s\r\n0\r\n\r\n" % (whole[:5], len(whole) - 5, whole[5:])
        self.accept(answer(BODY), answer(gzip(whole), PACKED), HEAD + b"\r\n" + whole,
                    CHUNKED + chunks)

    def test_the_request_says_who_asks_and_takes_gzip(self):
        head, = self.service.requests
        for shown in (r"\AGET /rates\.json HTTP/1\.1\r\n", r"\r\nUser-Agent: fexora/\d",
                      r"\r\nAccept-Encoding: gzip\r\n"):
            self.assertRegex(head, shown)
        self.assertNotIn("\r\nIf-", head)

    def test_refused_or_broken_off(self):
        with socket.socket() as refusing:
            refusing.bind(("127.0.0.1", 0))
            nobody = "http://127.0.0.1:%d/" % refusing.getsockname()[1]
            self.reject_each("noConnection", redirect(nobody))
            self.url = nobody
            self.reject_each("noConnection", b"")
        self.url = self.service.url
        self.reject_each(
            "noConnection", b"", broken_off(b""),
            broken_off(HEAD + b"Content-Length: 500\r\n\r\n{}"), b"SSH-2.0-Server\r\n",
            b"HTTP/1.1 200 OK\r\nConte")

    def test_lengths_that_are_wrong(self):
        whole = BODY.encode()
        self.reject_each(
            "noConnection", HEAD + b"Content-Length: 500\r\n\r\n" + whole,
            HEAD + b"Content-Length: x\r\n\r\n" + whole, CHUNKED + b"60\r\n" + whole,
            CHUNKED + b"xyz\r\n" + whole)
        self.reject_each("notJson", HEAD + b"Content-Length: 20\r\n\r\n" + whole,
                         HEAD + b"\r\n" + whole[:len(whole) // 2], answer(""))

    def test_gzip_that_is_damaged(self):
        packed = gzip(BODY.encode())
        flipped = packed[:-6] + bytes([packed[-6] ^ 1]) + packed[-5:]  # the check sum
        self.reject_each(
            "notJson", answer(packed[:len(packed) // 2], PACKED), answer(packed[:5], PACKED),
            answer(packed), answer(BODY, PACKED), answer(flipped, PACKED),
            answer(BODY, PACKED + ", gzip" * 6))

    def test_what_is_too_large_takes_no_memory(self):
        tiny = ("[" + part * (15 * (1 << 20) // len(part)) + "1]"
                for part in ("[1],", '{"":""},', '"",'))
        spaces = b" " * (1 << 16)
        self.reject_each(
            "tooLarge", HEAD + b"Content-Length: 1073741824\r\n\r\n",
            answer(gzip(*[spaces] * 4096), PACKED), endless(HEAD + b"\r\n", spaces),
            answer(BODY, *["X-Header: " + "x" * 60] * 1000),
            endless(b"HTTP/1.1 200 OK\r\nX: ", spaces),
            endless(b"", b"HTTP/1.1 100 Continue\r\n\r\n"), *map(answer, tiny))
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, MEMORY)

    def test_too_large_is_just_beyond_the_limit_only(self):
        body = (b'{"serviceMessage":"hello",'
                b'"rates":[{"code":"EUR","rate":0.85},{"code":"USD","rate":1}],"":"%s"}')
        body %= b"x" * (LIMIT - len(body) + 2)
        self.assertEqual(len(body), LIMIT)
        self.accept(answer(body), answer(gzip(body), PACKED))

    def test_redirects(self):
        self.service.paths["/good.json"] = answer(BODY)
        self.accept(redirect("/good.json"))
        asked = len(self.service.requests)
        self.reject_each("httpStatus", redirect("/rates.json"), status=302)
        self.assertEqual(len(self.service.requests), asked + 6)
        self.reject_each("httpStatus", redirect("file:///etc/hostname"),
                         redirect("ftp://127.0.0.1/rates.json"),
                         redirect("http://127.0.0.1:99999/"), answer(BODY, status="302 Found"),
                         status=302)
        for i in range(2, 7):
            self.service.paths[f"/{i}"] = redirect(f"/{i + 1}", "301 Moved")
        self.service.paths["/7"] = answer(BODY)
        self.accept(redirect("/3"))
        self.reject_each("httpStatus", redirect("/2"), status=301)

    def test_the_status_decides_whatever_the_body(self):
        for status in (201, 203, 206, 300, 400, 401, 403, 404, 407, 410, 429, 500, 503, 599):
            self.reject_each("httpStatus", answer(BODY, status=f"{status} Whatever"), status=status)
        # Of 304: nothing was asked about, so nothing can stand unchanged.
        for status, rest in ((204, b""), (304, b""), (404, b"Content-Length: 0\r\n"),
                             (500, b"Content-Length: 1073741824\r\n\r\n{}")):
            self.reject_each("httpStatus", b"HTTP/1.1 %d Oops\r\n%s\r\n" % (status, rest),
                             status=status)
        self.reject_each("httpStatus", endless(b"HTTP/1.1 404 Not Found\r\n\r\n", BODY.encode()),
                         status=404)

    def test_bodies_that_are_no_object(self):
        self.reject_each("notJson", answer("<html>Please log in</html>"), answer("[" * 100_000))
        self.reject_each("notAnObject", *map(answer, ("[]", "null", '"text"')))

    def test_an_answer_without_rates_is_taken_by_force_only(self):
        for self.service.script in map(answer, (
                "{}", '{"serviceMessage": 7}', '{"rates": [{}, 1]}', '{"rates": {}}',
                '{"rates": null}')):
            self.assertEqual(self.failure(3, "refresh")["kind"], "implausible")
            self.assertEqual(self.store.read_bytes(), self.before)
        self.service.script = answer('{"serviceMessage": "closed for good", "rates": []}')
        message = self.failure(3, "refresh")["message"]
        self.assertIn("there are none; the service says: closed for good; the cached", message)
        self.service.script = answer("{}")
        code, out, err = self.run_program("refresh", "--force", "--json")
        self.assertEqual((code, json.loads(out)["count"], json.loads(out)["message"]), (0, 0, ""))
        self.assertIn("no rates", err)
        # Conversions then use the bundled rates.
        self.assertEqual(self.json("1", "USD", "EUR")["origin"], "bundled")

    def test_proxy_of_the_environment(self):
        self.url = "http://rates.invalid/rates.json"
        through = {"http_proxy": self.service.base, "no_proxy": None}
        self.service.paths[self.url] = answer(BODY)
        self.succeed("refresh", env=self.environment(**through))
        self.assertRegex(self.service.requests[-1],
                         r"\AGET http://rates\.invalid/rates\.json HTTP/")
        # What the library underneath says of a proxy quotes it, whole or cut off.
        for length in (6, 300):
            through["http_proxy"] = f"http://user:{'s' * length}@[no-proxy"
            error = self.failure(3, "refresh", env=self.environment(**through))
            self.assertNotRegex(error["message"], "sss|user")
