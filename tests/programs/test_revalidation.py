"""An answer that stands unchanged is not sent again, and counts as having come again."""

import json
import os
import pathlib
import plistlib
import re

from service import LIMIT, PACKED, ServedTest, answer, gzip

TAG = 'ETag: "one"'
DATE = "Last-Modified: Tue, 29 Sep 2026 00:00:00 GMT"
NOTHING_KEPT = ("httpStatus",)  # to stand unchanged
UNCHANGED = b"HTTP/1.1 304 Not Modified\r\nConnection: close\r\n\r\n"
IF_TAG = 'If-None-Match: "one"'
IF_DATE = "If-Modified-Since: Tue, 29 Sep 2026 00:00:00 GMT"


def said(message):
    return json.dumps({"serviceMessage": message,
                       "rates": [{"code": "EUR", "rate": 0.85}, {"code": "USD", "rate": 1}]})


class Revalidation(ServedTest):
    def setUp(self):
        super().setUp()
        self.cache = pathlib.Path(f"{self.container}-cache/fexora")

    def ask(self, script, **changes):
        """The service's message, or the kind of the error; and what was asked about."""
        self.service.script = script
        _, out, _ = self.run_program("refresh", "--json", env=self.environment(**changes))
        result = json.loads(out)
        return (result["error"]["kind"] if "error" in result else result["message"],
                *re.findall(r"\r\n(If-[^\r]*)", self.service.requests[-1]))

    def keep(self, message, *headers, **changes):
        self.assertEqual(self.ask(answer(said(message), *headers), **changes)[0], message)

    def kept_file(self):
        file, = self.cache.iterdir()
        return file

    def test_unchanged_counts_as_the_answer_again(self):
        for validators, asked in (([TAG, DATE], [IF_TAG, IF_DATE]), ([TAG], [IF_TAG]),
                                  ([DATE], [IF_DATE]),
                                  (['ETag: W/"two"'], ['If-None-Match: W/"two"'])):
            self.keep(validators[0], *validators)
            for _ in range(2):
                self.assertEqual(self.ask(UNCHANGED), (validators[0], *asked))

    def test_gzip_and_redirects(self):
        self.service.paths["/target"] = answer(gzip(said("packed").encode()), PACKED, TAG)
        for script in (answer("", "Location: /target", 'ETag: "no"', status="302 Found"),
                       UNCHANGED):
            self.assertEqual(self.ask(script)[0], "packed")
            self.service.paths["/target"] = UNCHANGED
        # Kept under the address that was asked for.
        self.assertEqual(self.ask(UNCHANGED), ("packed", IF_TAG))

    def test_what_failed_leaves_the_kept(self):
        self.keep("one", TAG)
        two = 'ETag: "two"'
        for script in (answer("<html>", two), answer("{}", two, status="500 Oops"), b"",
                       answer("{}", two, status="404 Gone"), answer("{", two),
                       b'HTTP/1.1 200 OK\r\nETag: "two"\r\nContent-Length: 9\r\n\r\n{}'):
            self.assertEqual(self.ask(script)[1:], (IF_TAG,))
        self.assertEqual(self.ask(UNCHANGED), ("one", IF_TAG))

    def test_without_a_validator_nothing_is_kept(self):
        # What cannot be sent back in a header is none.
        for headers in ([], ['ETag: "\x01"', "Last-Modified: ÿ"], ['ETag: "%s"' % ("e" * 2000)]):
            self.keep("one", *headers)
            self.assertFalse(self.cache.exists())
        self.assertEqual(self.ask(UNCHANGED), NOTHING_KEPT)

    def test_addresses_and_containers_are_apart(self):
        self.keep("one", TAG)
        others = [{"FEXORA_CONTAINER": str(self.container / "\udcff")},
                  {"FEXORA_RATES_URL": self.service.base + "/other"}]
        for changes in others:
            self.assertEqual(self.ask(UNCHANGED, **changes), NOTHING_KEPT)
        # Nor does one file stand for another, whatever its name.
        file = self.kept_file()
        content = plistlib.loads(file.read_bytes())
        for changes in others:
            file.unlink()
            self.keep("other", TAG, **changes)
            file = self.kept_file()
            file.write_bytes(plistlib.dumps(content))
            self.assertEqual(self.ask(UNCHANGED, **changes), NOTHING_KEPT)

    def test_file_and_folder_are_the_users_own(self):
        self.keep("one", TAG)
        self.assertEqual([path.stat().st_mode & 0o7777 for path in (self.cache, self.kept_file())],
                         [0o700, 0o600])
        self.cache.chmod(0o770)
        self.assertEqual(self.ask(UNCHANGED), NOTHING_KEPT)
        self.service.script = answer(said("two"), TAG)
        self.assertIn(f"could not be kept in {self.cache}",
                      self.run_program("refresh", "--verbose")[2])

    def test_what_is_no_such_property_list_or_no_file_counts_as_none(self):
        self.keep("one", TAG, DATE)
        file = self.kept_file()
        whole = file.read_bytes()
        content = plistlib.loads(whole)
        self.assertEqual(set(content), {"container", "address", "etag", "lastModified", "body"})
        without = [{key: value for key, value in content.items() if key != name}
                   for name in content]
        spoilt = [content | change for change in (
            {"etag": 1}, {"body": "{}"}, {"body": [b"{}"]}, {"etag": "\x7f"},
            {"etag": "", "lastModified": ""},
            {"lastModified": "x" * 1025}, {"body": b"<html>"}, {"body": b"[]"},
            {"body": b" " * (LIMIT + 1)}, {"address": content["container"]})]
        others = map(plistlib.dumps, [*without, *spoilt, [content], content["body"]])
        for damaged in (*[whole[:size] for size in range(0, len(whole) - 1, 61)], b"bplist00",
                        *others):
            file.write_bytes(damaged)
            self.assertEqual(self.ask(UNCHANGED), NOTHING_KEPT, damaged[-200:])
        (self.container / "elsewhere").write_bytes(whole)
        for make in (lambda: file.symlink_to(self.container / "elsewhere"),
                     lambda: os.mkfifo(file)):
            file.unlink()
            make()
            self.assertEqual(self.ask(UNCHANGED), NOTHING_KEPT)
        # The next answer mends it.
        self.keep("two", TAG)
        self.assertEqual(self.ask(UNCHANGED), ("two", IF_TAG))

    def test_a_folder_that_cannot_be_made_hurts_nothing(self):
        (self.container / "file").touch()
        for folder in (f"{self.container}/file", f"{self.container}/file/below", None) * 2:
            asked = self.ask(answer(said("one"), TAG), XDG_CACHE_HOME=folder, HOME=None)
            self.assertEqual(asked, ("one",))

    def test_of_many_addresses_the_last_are_kept(self):
        addresses = [{"FEXORA_RATES_URL": f"{self.service.base}/{i}"} for i in range(12)]
        self.keep("0", TAG, **addresses[0])
        os.utime(self.kept_file(), (1, 1))
        (self.cache / "of somebody else").touch()
        for i in range(1, 12):
            self.keep(str(i), TAG, **addresses[i])
            self.assertEqual(len(list(self.cache.iterdir())), min(i + 1, 8) + 1)
        self.assertEqual(self.ask(UNCHANGED, **addresses[0]), NOTHING_KEPT)
        self.assertEqual(self.ask(UNCHANGED, **addresses[11]), ("11", IF_TAG))
